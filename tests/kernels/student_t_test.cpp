#include "kernels/student_t.hpp"

#include "conventions/error_channel.hpp"
#include "kernels/normal.hpp"
#include "kernels/tails.hpp"
#include "support/csv.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace vela::test {
namespace {

using conventions::error_channel;
using kernels::inv_t_df;
using kernels::t_df;
using kernels::t_pdf;
using kernels::t_upper_qt;

// The promise of the kernel for each tail and for the density.
constexpr double kTolerance = 1e-13;

Tails student_t(double t, double df) { return tails_of(t_df, t, df); }
double quantile(double p, double df) { return quantile_of(inv_t_df, p, df); }

TEST(StudentT, TailsAndDensityKeepRelativeAccuracyAndQuantilesInvert) {
    for (const auto& [x, df, lower, upper, density] : read_numbers<5>("student_t.csv")) {
        SCOPED_TRACE(testing::Message() << "t " << x << " df " << df);
        const Tails tails = student_t(x, df);
        EXPECT_EQ(error_channel.kernel_error_level, 0);
        EXPECT_TRUE(within_relative(tails, {lower, upper}, kTolerance)) << tails;
        EXPECT_NEAR(t_pdf(x, df), density, kTolerance * density);
        EXPECT_EQ(student_t(-x, df), (Tails{tails.upper, tails.lower}));
        if (upper >= 0.5) {
            continue;
        }
        const double t = quantile_of(t_upper_qt, upper, df);
        if (error_channel.kernel_error_level == conventions::kArgumentTooLarge) {
            EXPECT_GT(x, 1e300);
            continue;
        }
        ASSERT_EQ(error_channel.kernel_error_level, 0);
        expect_quantile(-t, upper, kTolerance, [n = df](double at) { return student_t(at, n); });
        EXPECT_EQ(quantile(upper, df), -t);
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
        EXPECT_EQ(student_t(0.0, df), (Tails{0.5, 0.5}));
        EXPECT_EQ(student_t(kInfinity, df), (Tails{1.0, 0.0}));
        EXPECT_EQ(student_t(-kInfinity, df), (Tails{0.0, 1.0}));
        EXPECT_EQ(t_pdf(kInfinity, df), 0.0);
        EXPECT_EQ(error_channel.kernel_error_level, 0);
    }
}

TEST(StudentT, InfiniteDegreesOfFreedomAreTheNormalKernel) {
    for (const double t : {-8.0, -0.3, 1.0, 30.0}) {
        EXPECT_EQ(student_t(t, kInfinity), tails_of(kernels::normal_df, t));
        const double density = std::exp(-0.5 * t * t) / std::sqrt(2.0 * 3.141592653589793);
        EXPECT_NEAR(t_pdf(t, kInfinity), density, kTolerance * density);
    }
    EXPECT_EQ(quantile(0.01, kInfinity), quantile_of(kernels::inv_normal_df, 0.01));
    // beyond the normal kernel's domain: twice the last bit of z there is 1e-13 of p
    EXPECT_NEAR(student_t(quantile(1e-200, kInfinity), 1e30).lower, 1e-200, 3e-13 * 1e-200);
}

TEST(StudentT, BadArgumentsReportLevelTwo) {
    const double bad[][2] = {{kNaN, 1.0}, {1.0, kNaN}, {1.0, 0.0}, {1.0, -2.0}, {1.0, -kInfinity}};
    for (const auto& [t, df] : bad) {
        EXPECT_EQ(student_t(t, df), kFailedTails);
        EXPECT_EQ(error_channel.kernel_error_level, 2);
        t_pdf(t, df);
        EXPECT_EQ(error_channel.kernel_error_level, 2);
    }
    for (const double p : {kNaN, -0.1, 0.0, 1.0, 1.5, kInfinity}) {
        EXPECT_EQ(quantile(p, 3.0), -kernels::kLargestDouble);
        EXPECT_EQ(error_channel.kernel_error_level, 2);
        EXPECT_STREQ(error_channel.kernel_routine_name, "inv_t_df");
    }
    EXPECT_EQ(quantile_of(t_upper_qt, 0.6, 3.0), -kernels::kLargestDouble);
    EXPECT_EQ(error_channel.kernel_error_level, 2);
}

}  // namespace
}  // namespace vela::test
