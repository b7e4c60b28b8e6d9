#include "vela/v1/moments.hpp"
#include "descriptive/hard_samples.hpp"
#include "descriptive/known_divisor.hpp"
#include "descriptive/mean_and_variance.hpp"
#include "descriptive/plain_sum.hpp"
#include "support/equality.hpp"
#include "support/reference_cases.hpp"
#include "support/special_values.hpp"
#include "vela/v0/correlation.hpp"
#include "vela/v1/correlation.hpp"
#include "vela/v2/geometric_mean.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cfenv>
#include <cmath>
#include <iterator>
#include <random>
#include <vector>

namespace vela::test {
namespace {

const Runners kFunctions = {
    {"GetSum", [](auto& c, auto& r) { r.value("value") = v1::GetSum(c.x(), c.n()); }},
    {"GetCumulativeSums",
     [](auto& c, auto& r) {
         Values& out = r["out"] = c.data[0];
         v1::GetCumulativeSums(out.data(), c.n(), out.data());
     }},
    {"GetProportions",
     [](auto& c, auto& r) {
         Values& out = r["out"] = c.data[0];
         r.value("value") = v1::GetProportions(out.data(), c.n(), out.data());
     }},
    {"GetSampleMean", [](auto& c, auto& r) { r.value("value") = v1::GetSampleMean(c.x(), c.n()); }},
    {"GetSampleVariance",
     [](auto& c, auto& r) {
         r.value("value") = c.has("center") ? v1::GetSampleVariance(c.x(), c.n(), c.get("center"))
                                            : v1::GetSampleVariance(c.x(), c.n());
     }},
    {"GetSampleMeanAndVariance",
     [](auto& c, auto& r) {
         Values out = c.data[0];
         out.resize(std::max(c.n(), 2U));
         v1::GetSampleMeanAndVariance(out.data(), c.n(), &out[0], &out[1]);
         r.value("mean") = out[0];
         r.value("variance") = out[1];
     }},
    {"GetCenteredOrderKPowerSums",
     [](auto& c, auto& r) {
         // In place: the outputs may overlap the data.
         const auto k = static_cast<std::uint32_t>(c.integer("k"));
         Values& out = r["out"] = c.data[0];
         out.resize(std::max(c.n(), k), -1.0);
         r.value("status") = v1::GetCenteredOrderKPowerSums(out.data(), c.n(), out.data(), k);
         out.resize(k);
     }},
    {"GetKroSkewnessAndKurtosis",
     [](auto& c, auto& r) {
         v1::GetKroSkewnessAndKurtosis(c.x(), c.n(), &r.value("skewness"), &r.value("kurtosis"));
     }},
    {"GetSecondSampleMoments",
     [](auto& c, auto& r) {
         v1::SecondSampleMoments record;
         record.count = c.n();
         v1::GetSecondSampleMoments(&record, c.x());
         r.add_fields(&record, "variance sumOfSquares mean sum");
     }},
    {"GetGeometricMean",
     [](auto& c, auto& r) { r.value("value") = v2::GetGeometricMean(c.x(), c.n()); }},
    {"GetCovariance",
     [](auto& c, auto& r) {
         r.value("varianceX") = r.value("varianceY") = -1.0;
         r.value("value") = v1::GetCovariance(c.x(), c.data[1].data(), c.n(), &r.value("varianceX"),
                                              &r.value("varianceY"));
     }},
    {"GetPearsonCorrelation",
     [](auto& c, auto& r) {
         r.value("value") = v1::GetPearsonCorrelation(c.x(), c.data[1].data(), c.n());
     }},
    {"GetSpearmanCorrelation",
     [](auto& c, auto& r) {
         int status = -1;
         r.value("value") = v1::GetSpearmanCorrelation(c.x(), c.data[1].data(), c.n(), &status);
         r.value("status") = status;
     }},
    {"GetKroCorrelationPValue",
     [](auto& c, auto& r) {
         const auto n = static_cast<unsigned int>(c.get("n"));
         r.value("value") = v0::GetKroCorrelationPValue(c.get("r"), n);
     }},
};

TEST(Moments, AgreeWithExactArithmetic) { check_reference_cases("descriptive.csv", kFunctions); }

/// Mean, M2, M3, M4 as they are defined, one operation after the other.
Values plain_power_sums(const Values& x) {
    PlainSum m{x[0]};
    PlainSum m2, m3, m4;
    for (std::uint32_t k = 1; k < x.size(); ++k) {
        const double i = k;
        const double d = x[k] - m.sum;
        const double q = d / (i + 1.0);
        const double t = i * q * d;
        m.add(q);
        m4.add((static_cast<double>((k - 1U) * k) + 1.0) * t * q * q + 6.0 * m2.sum * q * q -
               4.0 * m3.sum * q);
        m3.add(((i - 1.0) * t - 3.0 * m2.sum) * q);
        m2.add(t);
    }
    return {m.sum, m2.sum, m3.sum, m4.sum};
}

void expect_results_of_plain_loops(const Values& x) {
    SCOPED_TRACE(testing::Message() << x.size() << " values from " << x[0]);
    const Values expected = plain_power_sums(x);
    Values sums(4);
    v1::GetCenteredOrderKPowerSums(x.data(), size(x), sums.data(), 4);
    EXPECT_TRUE(std::equal(sums.begin(), sums.end(), expected.begin(), same_bits));

    double mean = 0.0;
    double variance = 0.0;
    v1::GetSampleMeanAndVariance(x.data(), size(x), &mean, &variance);
    EXPECT_TRUE(same_bits(mean, expected[0]));
    EXPECT_TRUE(same_bits(variance, x.size() == 1 ? 0.0 : expected[1] / (size(x) - 1.0)));
    EXPECT_TRUE(same_bits(v1::GetSampleMean(x.data(), size(x)), expected[0]));

    PlainSum sum;
    Values cumulative(x.size());
    v1::GetCumulativeSums(x.data(), size(x), cumulative.data());
    const auto is_next = [&](double value, double got) {
        sum.add(value);
        return same_bits(got, sum.sum);
    };
    EXPECT_TRUE(std::equal(x.begin(), x.end(), cumulative.begin(), is_next));
    EXPECT_TRUE(same_bits(v1::GetSum(x.data(), size(x)), sum.sum));
}

TEST(Moments, AreThoseOfThePlainLoopsBitForBit) {
    // The faster division is for rounding to nearest; the other directions take the plain one.
    for (const int direction : {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD}) {
        std::fesetround(direction);
        expect_results_of_plain_loops({-0.0, -5e-324});  // a mean of +0.0 to nearest
        for (const std::size_t n : {1U, 2U, 3U, 4U, 5U, 12U, 13U, 64U, 1000U, 70'000U}) {
            for (const Values& x : hard_samples(n)) {
                expect_results_of_plain_loops(x);
            }
        }
    }
    std::fesetround(FE_TONEAREST);
}

TEST(Moments, OfSamplesTogetherAreThoseOfEachAlone) {
    std::vector<Values> samples;
    for (const std::size_t n : {0U, 1U, 2U, 5U, 13U, 64U, 1000U}) {
        std::ranges::move(hard_samples(n), std::back_inserter(samples));
    }
    for (std::size_t i = 0; i < samples.size(); ++i) {
        std::array<descriptive::Sample, 3> three;
        for (std::size_t k = 0; k < 3; ++k) {
            const Values& x = samples[(i + 17 * k) % samples.size()];
            three[k] = {x.data(), size(x)};
        }
        const auto got = descriptive::means_and_variances<3>(three);
        for (std::size_t k = 0; k < 3; ++k) {
            double mean = 0.0;
            double variance = 0.0;
            v1::GetSampleMeanAndVariance(three[k].x, three[k].n, &mean, &variance);
            EXPECT_TRUE(same_bits(got[k].mean, mean) && same_bits(got[k].variance, variance))
                << three[k].n << " values, after " << i << " samples";
        }
    }
}

__extension__ using Wide = unsigned __int128;

/// A dividend whose quotient by an odd divisor is as close to the midpoint of two doubles as any:
/// midpoint * divisor = dividend * 2^shift + 1, with a midpoint of 54 bits.
double hardest_dividend(std::uint64_t divisor, std::uint64_t seed) {
    const auto shift = static_cast<unsigned>(std::bit_width(divisor)) + 1U;
    std::uint64_t inverse = divisor;  // modulo 2^64, by Newton's iteration
    for (int i = 0; i < 6; ++i) {
        inverse *= 2U - divisor * inverse;
    }
    const std::uint64_t low = (std::uint64_t{1} << shift) - 1U;
    const std::uint64_t high = (std::uint64_t{1} << 53U) | (seed >> 11U);
    const std::uint64_t midpoint = (high & ~low) | (inverse & low);
    const Wide product = static_cast<Wide>(midpoint) * divisor - 1U;
    return static_cast<double>(static_cast<std::uint64_t>(product >> shift));
}

TEST(KnownDivisor, FusedQuotientIsTheRoundedQuotient) {
    std::mt19937_64 bits(1965);
    const auto expect_same = [](double dividend, double divisor) {
        const auto& table = descriptive::kReciprocals;
        const auto i = static_cast<std::size_t>(divisor) - 1U;
        const descriptive::FusedDivisor fused(
            divisor, i < descriptive::kTabulated
                         ? descriptive::Reciprocal{table.high[i], table.low[i]}
                         : descriptive::FusedDivisor::reciprocal(divisor));
        const double expected = dividend / divisor;
        const descriptive::Pair pair = fused.quotient(descriptive::Pair{dividend, -dividend});
        ASSERT_TRUE(same_bits(fused.quotient(dividend), expected) && same_bits(pair[0], expected) &&
                    same_bits(pair[1], -expected))
            << testing::PrintToString(dividend) << " / " << divisor;
    };
    const double kEdges[] = {0.0,       kNaN,     kInfinity, 5e-324,
                             0x1p-1022, 0x1p-513, 0x1p-512,  0x1.fffffffffffffp511,
                             0x1p512,   0x1p1023};
    for (int i = 0; i < 200'000; ++i) {
        const std::uint64_t divisor =
            i < 20'000 ? 2U + static_cast<unsigned>(i)
                       : std::max<std::uint64_t>(2U, (bits() >> 32U) >> bits() % 20U);
        const auto y = static_cast<double>(divisor);
        expect_same(std::bit_cast<double>(bits()), y);
        expect_same(kEdges[static_cast<std::size_t>(i) % std::size(kEdges)], y);
        expect_same(hardest_dividend(divisor | 1U, bits()), static_cast<double>(divisor | 1U));
    }
    expect_same(1.0, 0x1p32);
}

TEST(SecondSampleMoments, BeginAsNaNAndCountZero) {
    const v1::SecondSampleMoments fresh;
    EXPECT_TRUE(std::isnan(fresh.variance) && std::isnan(fresh.sumOfSquares) &&
                std::isnan(fresh.mean) && std::isnan(fresh.sum));
    EXPECT_EQ(fresh.count, 0U);
}

}  // namespace
}  // namespace vela::test
