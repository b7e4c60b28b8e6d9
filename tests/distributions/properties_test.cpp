// Promises that hold for every family, whatever its mathematics.

#include "support/entries.hpp"
#include "support/equality.hpp"
#include "vela/vela.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace vela::test {
namespace {

/// Every combination of parameters of an entry, with a placeholder for x.
std::vector<Arguments> parameter_sets(const Entry& entry) {
    std::vector<Arguments> sets;
    for_each_grid_point(entry, [&](const Arguments& arguments) {
        if (arguments[0] == grid(entry.domains[0]).front()) {
            sets.push_back(arguments);
        }
    });
    return sets;
}

double at(const Entry& entry, Arguments arguments, double x) {
    arguments[0] = x;
    return entry.scalar(arguments);
}

TEST(ArrayForms, EqualTheScalarFormBitForBitAlsoInPlace) {
    for (const Entry& entry : entries()) {
        if (!entry.array) {
            continue;
        }
        const std::vector<double>& x = grid(entry.domains[0]);
        for (const Arguments& parameters : parameter_sets(entry)) {
            std::vector<double> inPlace = x;
            std::vector<double> out(x.size() + 1, 42.0);
            entry.array(inPlace.data(), inPlace.data(), inPlace.size(), parameters);
            entry.array(out.data(), x.data(), x.size(), parameters);
            for (std::size_t i = 0; i < x.size(); ++i) {
                const double scalar = at(entry, parameters, x[i]);
                ASSERT_TRUE(same_bits(out[i], scalar)) << entry.name << " at " << x[i];
                ASSERT_TRUE(same_bits(inPlace[i], scalar)) << entry.name << " at " << x[i];
            }
            ASSERT_EQ(out.back(), 42.0) << entry.name << " wrote past the end";
            double untouched = 42.0;
            entry.array(&untouched, nullptr, 0, parameters);
            ASSERT_EQ(untouched, 42.0) << entry.name;
        }
    }
}

TEST(MissingValue, IsMissingToCumulativeAndInverseFunctionsAndOrdinaryToDensities) {
    struct Case {
        const char* name;
        Arguments arguments;
        bool isMissing;
    };
    const Case cases[] = {
        {"NormalPdf", {MissingValue, 0, 1}, false},
        {"NormalCdf", {MissingValue, 0, 1, 1}, true},
        {"NormalCdf", {MissingValue, MissingValue, 1, 0}, true},
        {"NormalInvCdf", {MissingValue, 0, 1}, true},
        {"TPdf", {MissingValue, 3, 0}, false},
        {"TCdf", {MissingValue, 3, 0, 1}, true},
        {"TInvCdf", {MissingValue, 3, 0}, true},
        {"ExponentialPdf", {MissingValue, 1, 0}, false},
        {"ExponentialCdf", {MissingValue, 1, 0, 0}, false},  // its formula holds literally
        {"NormalPValue", {MissingValue, 0}, true},
        {"TPValue", {MissingValue, 3, 0}, true},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(IsResultNA(entry(c.name).scalar(c.arguments)), c.isMissing) << c.name;
    }
}

TEST(CumulativeFunctions, HaveMonotoneTailsThatSumToOne) {
    // Steps of the 1e-9 kernels may go back by that much where regions meet.
    constexpr double slack = 2e-9;
    for (const Entry& entry : entries()) {
        if (!entry.has_tail_flag()) {
            continue;
        }
        std::vector<double> points = grid(entry.domains[0]);
        std::erase(points, MissingValue);
        for (double x = -12.0; x < 12.0; x += 0.37) {
            points.push_back(x);
        }
        std::sort(points.begin(), points.end());
        for (Arguments parameters : parameter_sets(entry)) {
            double previous = 0.0;
            for (const double x : points) {
                parameters.back() = 0.0;
                const double lower = at(entry, parameters, x);
                parameters.back() = 1.0;
                const double upper = at(entry, parameters, x);
                if (IsNaN(lower) && IsNaN(upper)) {
                    continue;  // no digits to be had, and neither tail pretends to some
                }
                ASSERT_NEAR(lower + upper, 1.0, 1e-15) << entry.name << " at " << x;
                ASSERT_GE(lower, previous * (1.0 - slack)) << entry.name << " at " << x;
                previous = lower;
            }
        }
    }
}

struct PValueCase {
    const char* name;
    Arguments arguments;
    double expected;
};

TEST(PValues, FollowTheAlternative) {
    const PValueCase cases[] = {
        {"NormalPValue", {0, 0}, 1.0},
        {"NormalPValue", {0, 1}, 0.5},
        {"NormalPValue", {0, -1}, 0.5},
        {"NormalPValue", {1.5, 2}, 0.0},
        {"TPValue", {1.5, 4, 2}, 0.0},
        {"TPValue", {0, 4, 0}, 1.0},
        {"TPValue", {1, 1, 1}, 0.25},
        {"TPValue", {1, 1, -1}, 0.75},
        {"TPValue", {-1, 1, 0}, 0.5},
        {"TPValue", {1, -1, 0}, std::numeric_limits<double>::quiet_NaN()},
        {"ChiSqPValue", {0, -1, 1}, 1.0},  // df is not looked at
        {"ChiSqPValue", {-1, 3, -1}, 0.0},
        {"ChiSqPValue", {2, 2, 2}, 0.0},
        {"FPValue", {0, -1, 3, 1}, 1.0},
        {"FPValue", {-1, 2, 3, -1}, 0.0},
        {"FPValue", {1, 2, 3, -2}, 0.0},
        {"ChiSqCritValue", {MissingValue, -1, 0}, 0.0},  // no quantile is asked for
        {"FCritValue", {0.05, 0, 3, 2}, 0.0},
    };
    for (const PValueCase& c : cases) {
        EXPECT_TRUE(within_relative(entry(c.name).scalar(c.arguments), c.expected, 1e-15))
            << c.name;
    }
}

TEST(CriticalValues, AreUpperTailValuesAtTheCorrectedLevel) {
    using enum EAlternative;
    EXPECT_EQ(NormalCritValue(0.05, LowerTailed), NormalCritValue(0.05, UpperTailed));
    EXPECT_EQ(NormalCritValue(0.05, TwoSided), NormalInvCdf(0.975, 0.0, 1.0));
    EXPECT_EQ(TCritValue(0.05, 7.0, TwoSided, 2), TCritValue(0.025, 7.0, TwoSided, 1));
    EXPECT_EQ(TCritValue(0.05, 7.0, LowerTailed, 1), TInvCdf(0.95, 7.0, 0.0));
    EXPECT_GT(TCritValue(0.05, 7.0, TwoSided, 3), TSidakCritValue(0.05, 7.0, TwoSided, 3));
    EXPECT_TRUE(IsNaN(TCritValue(0.05, 7.0, static_cast<EAlternative>(2), 1)));
    EXPECT_TRUE(IsNaN(NormalCritValue(0.05, static_cast<EAlternative>(-2))));
}

TEST(NormalCdf, IsOneHalfAtTheMeanBeforeAnythingElseIsLookedAt) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const double sd : {1.0, 0.0, -1.0, nan}) {
        EXPECT_EQ(NormalCdf(1.0, 1.0, sd, false), 0.5);
        EXPECT_EQ(NormalCdf(1.0, 1.0, sd, true), 0.5);
    }
}

TEST(NormalCdf, IsExactlySymmetricAndVanishesInTheFarTail) {
    for (double x = 0.01; x < 40.0; x += 0.173) {
        EXPECT_EQ(NormalCdf(-x, 0.0, 1.0, false), NormalCdf(x, 0.0, 1.0, true));
        EXPECT_EQ(NormalCdf(-x, 0.0, 1.0, true), NormalCdf(x, 0.0, 1.0, false));
    }
    EXPECT_GT(NormalCdf(36.2911, 0.0, 1.0, true), 0.0);
    EXPECT_EQ(NormalCdf(36.2913, 0.0, 1.0, true), 0.0);
}

TEST(Standardising, DoesNotOverflowWhereTheAnswerIsOrdinary) {
    EXPECT_EQ(NormalCdf(1.7e308, -1.7e308, 1.7e308, true), NormalCdf(2.0, 0.0, 1.0, true));
    EXPECT_EQ(NormalCdf(1.7e308, -1.7e308, 1e-300, true), 0.0);
    EXPECT_EQ(ExponentialCdf(1.0, 5e-324, 0.0, false), 1.0);
    EXPECT_TRUE(within_relative(NormalInvCdf(0.99, -1.7e308, 1e308),
                                (NormalInvCdf(0.99, 0.0, 1.0) - 1.7) * 1e308, 1e-14));
}

}  // namespace
}  // namespace vela::test
