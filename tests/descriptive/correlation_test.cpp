#include "vela/v0/correlation.hpp"
#include "descriptive/hard_samples.hpp"
#include "descriptive/plain_sum.hpp"
#include "support/equality.hpp"
#include "support/reference_cases.hpp"
#include "support/special_values.hpp"
#include "support/threads.hpp"
#include "vela/floating_point.hpp"
#include "vela/p_values.hpp"
#include "vela/v1/correlation.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace vela::test {
namespace {

/// Sxx, Syy, Sxy as they are defined, one operation after the other.
Values plain_comoments(const Values& x, const Values& y) {
    PlainSum mx{x[0]}, my{y[0]};
    PlainSum xx, yy, xy;
    for (std::size_t k = 1; k < x.size(); ++k) {
        const auto i = static_cast<double>(k);
        const double dx = x[k] - mx.sum;
        const double dy = y[k] - my.sum;
        const double qx = dx / (i + 1.0);
        const double qy = dy / (i + 1.0);
        mx.add(qx);
        my.add(qy);
        xx.add(i * dx * qx);
        yy.add(i * dy * qy);
        xy.add(i * qy * dx);
    }
    return {xx.sum, yy.sum, xy.sum};
}

TEST(Covariance, IsThatOfThePlainLoopBitForBit) {
    for (const std::size_t n : {2U, 3U, 50U, 1001U}) {
        const auto series = hard_samples(n);
        for (std::size_t i = 0; i < series.size() * series.size(); ++i) {
            const Values& x = series[i / series.size()];
            const Values& y = series[i % series.size()];
            const Values sums = plain_comoments(x, y);
            double varianceX = 0.0;
            double varianceY = 0.0;
            const double covariance =
                v1::GetCovariance(x.data(), y.data(), size(x), &varianceX, &varianceY);
            const double divisor = static_cast<double>(n) - 1.0;
            EXPECT_TRUE(same_bits(varianceX, sums[0] / divisor) &&
                        same_bits(varianceY, sums[1] / divisor) &&
                        same_bits(covariance, sums[2] / divisor))
                << "n " << n << ", series " << i;
            const double r = v1::GetPearsonCorrelation(x.data(), y.data(), size(x));
            const double plain = std::sqrt(sums[2] * sums[2] / (sums[1] * sums[0]));
            const double bounded = plain > 1.0 ? 1.0 : plain;
            EXPECT_TRUE(same_bits(r, sums[2] < 0.0 ? -bounded : bounded)) << n << " " << i;
        }
    }
}

TEST(Correlation, OfProportionalSeriesIsOneAndNeverMore) {
    // Rounding alone would carry half of these beyond 1.
    std::mt19937_64 bits(7);
    for (int i = 0; i < 2000; ++i) {
        Values x(2 + bits() % 5U);
        Values y(x.size());
        for (std::size_t k = 0; k < x.size(); ++k) {
            x[k] = static_cast<double>(bits() % 1000U) / 7.0 + 1e3 * static_cast<double>(k);
            y[k] = x[k] / 3.0;
        }
        const double r = v1::GetPearsonCorrelation(x.data(), y.data(), size(x));
        EXPECT_LE(r, 1.0);
        EXPECT_GT(r, 1.0 - 1e-14);
    }
}

TEST(CorrelationPValue, IsThatOfStudentsTAndNaNOutsideTheDomain) {
    under_armed_host([] {
        for (const double r : {-0.99999999, -0.5, 1e-300, 0.3, 1.0 - 0x1p-53}) {
            const double t = r * std::sqrt(18.0 / (1.0 - r * r));
            const double p = v0::GetKroCorrelationPValue(r, 20);
            EXPECT_EQ(p, TPValue(t, 18.0, EAlternative::TwoSided)) << r;
            SetKroFpuStates();
        }
        for (const double r : {kNaN, kInfinity, -1.0000001, 1.23456e30}) {
            EXPECT_TRUE(std::isnan(v0::GetKroCorrelationPValue(r, 10))) << r;
        }
    });
}

}  // namespace
}  // namespace vela::test
