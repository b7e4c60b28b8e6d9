#include "kernels/noncentral_t.hpp"

#include "conventions/error_channel.hpp"
#include "kernels/limits.hpp"
#include "kernels/student_t.hpp"
#include "support/csv.hpp"
#include "vela/missing_value.hpp"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace vela::kernels {
namespace {

using conventions::error_channel;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// What the kernel promises; the largest error measured is 7e-13, where a lower tail of 1e-3 is the
// complement of the upper one.
constexpr double kTolerance = 1e-12;

struct Case {
    double t, df, delta, lower, upper, density;
};

std::vector<Case> reference() {
    std::vector<Case> cases;
    for (const auto& row : test::read_csv("noncentral_t.csv")) {
        const auto field = [&](std::size_t i) { return test::parse_double(row.at(i)); };
        cases.push_back({field(0), field(1), field(2), field(3), field(4), field(5)});
    }
    return cases;
}

std::string describe(const Case& c) {
    return "t " + std::to_string(c.t) + ", df " + std::to_string(c.df) + ", delta " +
           std::to_string(c.delta);
}

double relative_error(double got, double expected) { return std::fabs(got / expected - 1.0); }

TEST(NoncentralT, BothTailsAndTheDensityKeepRelativeAccuracy) {
    for (const Case& c : reference()) {
        double lower = 0.0;
        double upper = 0.0;
        t_ncdf(c.t, c.df, c.delta, &lower, &upper);
        EXPECT_EQ(error_channel.kernel_error_level, 0) << describe(c);
        EXPECT_STREQ(error_channel.kernel_routine_name, "t_ncdf");
        EXPECT_LE(relative_error(lower, c.lower), kTolerance) << describe(c);
        EXPECT_LE(relative_error(upper, c.upper), kTolerance) << describe(c);
        if (c.density > DBL_MIN) {
            EXPECT_LE(relative_error(t_npdf(c.t, c.df, c.delta), c.density), kTolerance)
                << describe(c);
        }
    }
}

TEST(NoncentralT, ReflectionHoldsToTheLastBit) {
    for (const Case& c : reference()) {
        double lower = 0.0, upper = 0.0, mirroredLower = 0.0, mirroredUpper = 0.0;
        t_ncdf(c.t, c.df, c.delta, &lower, &upper);
        t_ncdf(-c.t, c.df, -c.delta, &mirroredLower, &mirroredUpper);
        EXPECT_EQ(lower, mirroredUpper) << describe(c);
        EXPECT_EQ(upper, mirroredLower) << describe(c);
    }
}

TEST(NoncentralT, QuantileInvertsTheSmallerTail) {
    for (const Case& c : reference()) {
        for (const double p : {c.lower, 0.5, 1e-5, 1.0 - 1e-5, 1e-100}) {
            if (p <= 0.0 || p >= 1.0) {
                continue;
            }
            double t = 0.0;
            inv_t_ncdf(p, c.df, c.delta, &t);
            if (error_channel.kernel_error_level == conventions::kArgumentTooLarge) {
                EXPECT_LT(c.df, 1.0) << describe(c) << ", p " << p;
                EXPECT_EQ(t, -kLargestDouble);
                continue;
            }
            ASSERT_EQ(error_channel.kernel_error_level, 0) << describe(c) << ", p " << p;
            double lower = 0.0, upper = 0.0;
            t_ncdf(t, c.df, c.delta, &lower, &upper);
            const double target = p <= 0.5 ? p : 1.0 - p;
            const double got = p <= 0.5 ? lower : upper;
            // No double t comes closer than half an ulp of t.
            const double half = std::fabs(t) * DBL_EPSILON * t_npdf(t, c.df, c.delta) / target;
            EXPECT_LE(relative_error(got, target), kTolerance + half) << describe(c) << ", p " << p;
        }
    }
}

TEST(NoncentralT, NoncentralityZeroIsTheCentralPath) {
    double lower = 0.0, upper = 0.0, centralLower = 0.0, centralUpper = 0.0;
    t_ncdf(1.3, 7.0, -0.0, &lower, &upper);
    t_df(1.3, 7.0, &centralLower, &centralUpper);
    EXPECT_EQ(lower, centralLower);
    EXPECT_EQ(upper, centralUpper);
    EXPECT_EQ(t_npdf(1.3, 7.0, 0.0), t_pdf(1.3, 7.0));
    double t = 0.0, central = 0.0;
    inv_t_ncdf(0.3, 7.0, 0.0, &t);
    inv_t_df(0.3, 7.0, &central);
    EXPECT_EQ(t, central);
}

TEST(NoncentralT, InfiniteArguments) {
    double lower = 0.0, upper = 0.0;
    t_ncdf(kInfinity, 3.0, 1.0, &lower, &upper);
    EXPECT_EQ(lower, 1.0);
    EXPECT_EQ(upper, 0.0);
    t_ncdf(-kInfinity, 3.0, 1.0, &lower, &upper);
    EXPECT_EQ(lower, 0.0);
    EXPECT_EQ(upper, 1.0);
    EXPECT_EQ(t_npdf(kInfinity, 3.0, 1.0), 0.0);
    // The normal kernel stops at 1e-9.
    t_ncdf(3.0, kInfinity, 1.0, &lower, &upper);
    EXPECT_NEAR(upper, 0.022750131948179207, 1e-9 * 0.0227);
    double t = 0.0;
    inv_t_ncdf(0.975, kInfinity, 1.0, &t);
    EXPECT_NEAR(t, 2.959963984540054, 1e-9);
}

TEST(NoncentralT, BadArgumentsAreReported) {
    struct Bad {
        double x, df, delta;
        int level;
    };
    const Bad table[] = {{kNaN, 1.0, 1.0, 2},      {0.5, kNaN, 1.0, 2}, {0.5, 1.0, kNaN, 2},
                         {0.5, 0.0, 1.0, 2},       {0.5, -1.0, 1.0, 2}, {0.5, -kInfinity, 1.0, 2},
                         {0.5, 1.0, kInfinity, 2}, {0.5, 1.0, -1e8, 3}, {0.5, 1e-30, 1.0, 3}};
    for (const Bad& bad : table) {
        double lower = 0.0, upper = 0.0, t = 0.0;
        t_ncdf(bad.x, bad.df, bad.delta, &lower, &upper);
        EXPECT_EQ(error_channel.kernel_error_level, bad.level);
        EXPECT_STREQ(error_channel.kernel_routine_name, "t_ncdf");
        EXPECT_EQ(lower, kLargestDouble);
        EXPECT_EQ(upper, kLargestDouble);
        EXPECT_EQ(t_npdf(bad.x, bad.df, bad.delta), MissingValue);
        inv_t_ncdf(bad.x, bad.df, bad.delta, &t);
        EXPECT_EQ(error_channel.kernel_error_level, bad.level);
        EXPECT_STREQ(error_channel.kernel_routine_name, "inv_t_ncdf");
        EXPECT_EQ(t, -kLargestDouble);
    }
    for (const double p : {-0.5, 0.0, 1.0, 2.0, kInfinity}) {
        double t = 0.0;
        inv_t_ncdf(p, 3.0, 1.0, &t);
        EXPECT_EQ(error_channel.kernel_error_level, conventions::kInvalidArgument);
        EXPECT_EQ(t, -kLargestDouble);
    }
    double t = 0.0;
    inv_t_ncdf(1e-200, 0.01, 1.0, &t);  // beyond the doubles
    EXPECT_EQ(error_channel.kernel_error_level, conventions::kArgumentTooLarge);
    EXPECT_EQ(t, -kLargestDouble);
}

}  // namespace
}  // namespace vela::kernels
