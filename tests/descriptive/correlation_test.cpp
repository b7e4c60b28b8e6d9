#include "vela/v0/correlation.hpp"
#include "descriptive/plain_sum.hpp"
#include "support/equality.hpp"
#include "support/floating_point_state.hpp"
#include "support/reference_cases.hpp"
#include "support/threads.hpp"
#include "vela/floating_point.hpp"
#include "vela/p_values.hpp"
#include "vela/v1/correlation.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace vela::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

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

/// Series of every magnitude, with an odd one out in some.
std::vector<Values> series(std::size_t n) {
    std::mt19937_64 bits(1896);
    std::vector<Values> all;
    for (const int exponent : {0, 30, 500, 1020, -500, -801, -1070}) {
        for (const double odd : {0.0, kNaN, kInfinity, -1e300}) {
            Values x(n);
            for (double& value : x) {
                value = std::ldexp(static_cast<double>(bits() >> 11U) * 0x1p-53 - 0.4, exponent);
            }
            x[n / 2] = odd == 0.0 ? x[n / 2] : odd;
            all.push_back(x);
        }
    }
    return all;
}

TEST(Covariance, IsThatOfThePlainLoopBitForBit) {
    for (const std::size_t n : {2U, 3U, 50U, 1001U}) {
        const auto all = series(n);
        for (std::size_t i = 0; i < all.size(); ++i) {
            const Values& x = all[i];
            const Values& y = all[(i * 5 + 3) % all.size()];
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

TEST(Covariance, OfFewerThanTwoPairsWritesNothing) {
    const double x[] = {1.0};
    double varianceX = -1.0;
    double varianceY = -2.0;
    EXPECT_TRUE(std::isnan(v1::GetCovariance(x, x, 1, &varianceX, &varianceY)));
    EXPECT_TRUE(std::isnan(v1::GetCovariance(nullptr, nullptr, 0, &varianceX, &varianceY)));
    EXPECT_EQ(varianceX, -1.0);
    EXPECT_EQ(varianceY, -2.0);
    EXPECT_TRUE(std::isnan(v1::GetPearsonCorrelation(x, x, 1)));
}

TEST(Correlation, OfProportionalSeriesIsOneAndNeverMore) {
    const double rising[] = {1, 2, 3, 4, 5, 6, 7};
    const double falling[] = {10, 7, 4, 1, -2, -5, -8};
    EXPECT_EQ(v1::GetPearsonCorrelation(rising, falling, 7), -1.0);
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

TEST(Spearman, SeesOnlyTheOrder) {
    const Values x = {3.0, -1.0, 4.0, 1.5, 9.0, 2.5, 4.0};
    const Values y = {0.3, 0.1, 0.2, 0.1, 0.9, 0.8, 0.7};
    Values grown(x.size());
    std::transform(x.begin(), x.end(), grown.begin(), [](double v) { return std::exp(v); });
    int status = -1;
    const double r = v1::GetSpearmanCorrelation(x.data(), y.data(), 7, &status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(v1::GetSpearmanCorrelation(grown.data(), y.data(), 7, &status), r);
    EXPECT_EQ(v1::GetSpearmanCorrelation(x.data(), grown.data(), 7, &status), 1.0);
    EXPECT_TRUE(std::isnan(v1::GetSpearmanCorrelation(nullptr, nullptr, 0, &status)));
    EXPECT_EQ(status, 0);
}

TEST(CorrelationPValue, IsDefinedForEveryArgumentAndNeverThrows) {
    const struct {
        double r;
        unsigned int n;
        double expected;
    } kCases[] = {{0.0, 3, 1.0},          {-0.0, 4'000'000'000U, 1.0},
                  {1.0, 3, 0.0},          {-1.0, 10, 0.0},
                  {0.5, 2, kNaN},         {1.0, 0, kNaN},
                  {kNaN, 10, kNaN},       {kInfinity, 10, kNaN},
                  {-1.0000001, 10, kNaN}, {1.23456e30, 9, kNaN}};
    // A host that left its traps armed.
    on_thread(Registration::kRegistered, [&] {
        SetKroFpuStates();
        const bool armed = traps_are_armed();
        for (const auto& c : kCases) {
            EXPECT_TRUE(same_bits(v0::GetKroCorrelationPValue(c.r, c.n), c.expected))
                << c.r << " " << c.n;
        }
        EXPECT_EQ(traps_are_armed(), armed);
        ResetFpuStates();
    });
    for (const double r : {-0.99999999, -0.5, 1e-300, 0.3, 1.0 - 0x1p-53}) {
        const double t = r * std::sqrt(18.0 / (1.0 - r * r));
        EXPECT_EQ(v0::GetKroCorrelationPValue(r, 20), TPValue(t, 18.0, EAlternative::TwoSided))
            << r;
    }
}

}  // namespace
}  // namespace vela::test
