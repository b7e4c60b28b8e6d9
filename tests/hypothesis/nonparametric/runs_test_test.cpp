#include "vela/vela.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <map>
#include <utility>
#include <vector>

namespace vela::test {
namespace {

using v1::RunsTest;

TEST(RunsTest, ExactPValueCountsTheOrdersOfTheSequence) {
    constexpr unsigned n = 12;
    std::array<double, n> x{};
    using Orders = std::map<unsigned, double>;  // by number of runs
    std::array<Orders, n + 1> orders;           // by number above
    for (unsigned pattern = 0; pattern < 1U << n; ++pattern) {
        const auto changes = static_cast<unsigned>(
            std::popcount((pattern ^ pattern >> 1U) & ((1U << (n - 1)) - 1U)));
        orders[static_cast<unsigned>(std::popcount(pattern))][changes + 1] += 1.0;
    }
    for (unsigned pattern = 0; pattern < 1U << n; ++pattern) {
        for (unsigned i = 0; i < n; ++i) {
            x[i] = (pattern >> i & 1U) != 0 ? 3.5 : -2.0;
        }
        RunsTest test;
        EXPECT_EQ(RunRunsTest(&test, x.data(), 0.0, n), 0);
        if (test.above < 2 || test.below < 2) {
            continue;  // the coefficient "one of none", 1 here, is a rule of its own
        }
        double lower = 0.0;
        double upper = 0.0;
        double all = 0.0;
        for (const auto& [runs, number] : orders[test.above]) {
            lower += runs <= test.runs ? number : 0.0;
            upper += runs >= test.runs ? number : 0.0;
            all += number;
        }
        const double expected = std::min(1.0, 2.0 * std::min(lower, upper) / all);
        ASSERT_NEAR(test.pValue, expected, 1e-12 * expected) << pattern;
    }
}

/// The larger class, above, comes first; each run but the last of its class has one member.
std::vector<double> make_sequence(unsigned below, unsigned above, unsigned runs) {
    const unsigned runsBelow = runs / 2;
    const unsigned runsAbove = runs - runsBelow;
    std::vector<double> x;
    for (unsigned i = 1; i <= runsAbove; ++i) {
        x.insert(x.end(), i < runsAbove ? 1 : above - (runsAbove - 1), 1.0);
        if (i <= runsBelow) {
            x.insert(x.end(), i < runsBelow ? 1 : below - (runsBelow - 1), -1.0);
        }
    }
    return x;
}

TEST(RunsTest, ExactPValueOfLongSequencesIsQuickAndLosesSixDigits) {
    // Expected values in 40-digit arithmetic. The logarithms of the binomial coefficients are near
    // 1e6, of which 1e-16 is lost.
    const struct {
        unsigned below, above, runs;
        double pValue;
    } cases[] = {
        {500000, 500000, 499000, 0.045392228196970766713},
        {500000, 500000, 501500, 0.0027264759104765607614},
        {1000, 999000, 1990, 0.001170033314308073518},
        {500000, 500000, 1000000, 0.0},  // underflow
        {1, 999999, 2, 4e-6},
        {1, 999999, 3, 1.0},
    };
    for (const auto& c : cases) {
        const std::vector<double> x = make_sequence(c.below, c.above, c.runs);
        RunsTest test;
        RunRunsTest(&test, x.data(), 0.0, static_cast<unsigned>(x.size()));
        EXPECT_EQ(test.below, c.below);
        EXPECT_EQ(test.above, c.above);
        EXPECT_EQ(test.runs, c.runs);
        EXPECT_NEAR(test.pValue, c.pValue, 1e-8 * c.pValue);
    }
}

TEST(RunsTest, NormalVariantOfNothingReadsNothing) {
    RunsTest test;
    test.runs = 5;
    EXPECT_EQ(RunKroRunsTest(&test, nullptr, 0.0, 0), 0);
    EXPECT_TRUE(test.below == 0 && test.above == 0 && test.runs == 0);
    EXPECT_TRUE(IsNaN(test.expected) && IsNaN(test.pValue));
}

}  // namespace
}  // namespace vela::test
