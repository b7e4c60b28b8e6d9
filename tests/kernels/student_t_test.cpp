#include "kernels/student_t.hpp"

#include "conventions/error_channel.hpp"
#include "kernels/normal.hpp"
#include "support/csv.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace vela {
namespace {

using conventions::error_channel;
using kernels::CentralT;
using kernels::inv_t_df;
using kernels::t_df;
using kernels::t_pdf;
using kernels::t_upper_qt;

// The promise of the kernel for each tail and for the density.
constexpr double kTolerance = 1e-13;
constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct Tails {
    double lower, upper;
};

Tails student_t(double t, double df) {
    Tails tails{};
    t_df(t, df, &tails.lower, &tails.upper);
    return tails;
}

double upper_quantile(double p, double df) {
    double t = 0.0;
    t_upper_qt(p, df, &t);
    return t;
}

double quantile(double p, double df) {
    double t = 0.0;
    inv_t_df(p, df, &t);
    return t;
}

TEST(StudentT, TailsAndDensityKeepRelativeAccuracy) {
    for (const test::Row& row : test::read_csv("student_t.csv")) {
        const double t = test::parse_double(row[0]);
        const double df = test::parse_double(row[1]);
        const double lower = test::parse_double(row[2]);
        const double upper = test::parse_double(row[3]);
        const double density = test::parse_double(row[4]);
        SCOPED_TRACE("t " + row[0] + " df " + row[1]);
        const Tails tails = student_t(t, df);
        EXPECT_EQ(error_channel.kernel_error_level, 0);
        EXPECT_NEAR(tails.lower, lower, kTolerance * lower);
        EXPECT_NEAR(tails.upper, upper, kTolerance * upper);
        EXPECT_NEAR(t_pdf(t, df), density, kTolerance * density);
        EXPECT_EQ(student_t(-t, df).lower, tails.upper);
        EXPECT_EQ(student_t(-t, df).upper, tails.lower);
    }
}

TEST(StudentT, QuantileInvertsTheTails) {
    for (const test::Row& row : test::read_csv("student_t.csv")) {
        const double df = test::parse_double(row[1]);
        const double p = test::parse_double(row[3]);
        if (p >= 0.5) {
            continue;
        }
        SCOPED_TRACE("p " + row[3] + " df " + row[1]);
        const double t = upper_quantile(p, df);
        if (error_channel.kernel_error_level == conventions::kArgumentTooLarge) {
            EXPECT_GT(test::parse_double(row[0]), 1e300);
            continue;
        }
        ASSERT_EQ(error_channel.kernel_error_level, 0);
        const Tails tails = student_t(t, df);
        // Next to 1e-280 neighbouring doubles t are up to 2.8e-13 apart in p: half of that is the
        // best that a rounded t can do.
        const double slope = t * t_pdf(t, df) / p;
        EXPECT_NEAR(tails.upper, p, (kTolerance + slope * 1.2e-16) * p);
        EXPECT_EQ(quantile(p, df), -t);
    }
}

TEST(StudentT, NextToOneHalfTheQuantileKeepsItsDigits) {
    // t = (p - 1/2) / density(0) to first order; what would be lost if the tail were inverted
    for (const double df : {0.3, 5.0, 19.0, 21.0, 1e5}) {
        const double p = 0.5 + 0x1p-40;
        const double expected = 0x1p-40 / t_pdf(0.0, df);
        EXPECT_NEAR(quantile(p, df), expected, 1e-14 * expected);
    }
    EXPECT_EQ(quantile(0.5, 3.0), 0.0);
}

TEST(StudentT, CentreAndEndsAreExact) {
    for (const double df : {1e-300, 1e-3, 1.0, 7.0, 1e8, 1e300, kInfinity}) {
        EXPECT_EQ(student_t(0.0, df).lower, 0.5);
        EXPECT_EQ(student_t(0.0, df).upper, 0.5);
        EXPECT_EQ(student_t(kInfinity, df).lower, 1.0);
        EXPECT_EQ(student_t(kInfinity, df).upper, 0.0);
        EXPECT_EQ(student_t(-kInfinity, df).lower, 0.0);
        EXPECT_EQ(t_pdf(kInfinity, df), 0.0);
        EXPECT_EQ(error_channel.kernel_error_level, 0);
    }
}

TEST(StudentT, InfiniteDegreesOfFreedomAreTheNormalKernel) {
    for (const double t : {-8.0, -0.3, 1.0, 30.0}) {
        Tails normal{};
        kernels::normal_df(t, &normal.lower, &normal.upper);
        EXPECT_EQ(student_t(t, kInfinity).lower, normal.lower);
        EXPECT_EQ(student_t(t, kInfinity).upper, normal.upper);
        const double density = std::exp(-0.5 * t * t) / std::sqrt(2.0 * 3.141592653589793);
        EXPECT_NEAR(t_pdf(t, kInfinity), density, kTolerance * density);
    }
    double z = 0.0;
    kernels::inv_normal_df(0.01, &z);
    EXPECT_EQ(quantile(0.01, kInfinity), z);
    // beyond the normal kernel's domain: twice the last bit of z there is 1e-13 of p
    EXPECT_NEAR(student_t(quantile(1e-200, kInfinity), 1e30).lower, 1e-200, 3e-13 * 1e-200);
}

TEST(StudentT, BadArgumentsReportLevelTwo) {
    const double bad[][2] = {{kNaN, 1.0}, {1.0, kNaN}, {1.0, 0.0}, {1.0, -2.0}, {1.0, -kInfinity}};
    for (const auto& [t, df] : bad) {
        const Tails tails = student_t(t, df);
        EXPECT_EQ(error_channel.kernel_error_level, 2);
        EXPECT_EQ(tails.lower, kLargest);
        EXPECT_EQ(tails.upper, kLargest);
        t_pdf(t, df);
        EXPECT_EQ(error_channel.kernel_error_level, 2);
    }
    for (const double p : {kNaN, -0.1, 0.0, 1.0, 1.5, kInfinity}) {
        EXPECT_EQ(quantile(p, 3.0), -kLargest);
        EXPECT_EQ(error_channel.kernel_error_level, 2);
        EXPECT_STREQ(error_channel.kernel_routine_name, "inv_t_df");
    }
    EXPECT_EQ(upper_quantile(0.6, 3.0), -kLargest);
    EXPECT_EQ(error_channel.kernel_error_level, 2);
}

}  // namespace
}  // namespace vela
