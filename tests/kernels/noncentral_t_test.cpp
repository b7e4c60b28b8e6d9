#include "kernels/noncentral_t.hpp"

#include "conventions/error_channel.hpp"
#include "kernels/student_t.hpp"
#include "kernels/tails.hpp"
#include "support/csv.hpp"
#include "vela/missing_value.hpp"

#include <gtest/gtest.h>

#include <cfloat>

namespace vela::test {
namespace {

using namespace kernels;
using conventions::error_channel;

// What the kernel promises; the largest error measured is 2e-12, where the halves of the mixture
// cancel to a thousandth of themselves.
constexpr double kTolerance = 3e-12;

Tails tails_at(double t, double df, double delta) { return tails_of(t_ncdf, t, df, delta); }
double quantile(double p, double df, double delta) { return quantile_of(inv_t_ncdf, p, df, delta); }

TEST(NoncentralT, TailsAndDensityKeepRelativeAccuracyAndReflectExactly) {
    for (const auto& [t, df, delta, lower, upper, density] : read_numbers<6>("noncentral_t.csv")) {
        SCOPED_TRACE(testing::Message() << "t " << t << ", df " << df << ", delta " << delta);
        const Tails tails = tails_at(t, df, delta);
        EXPECT_EQ(error_channel.kernel_error_level, 0);
        EXPECT_STREQ(error_channel.kernel_routine_name, "t_ncdf");
        EXPECT_TRUE(within_relative(tails, {lower, upper}, kTolerance)) << tails;
        EXPECT_EQ(tails_at(-t, df, -delta), (Tails{tails.upper, tails.lower}));
        if (density > DBL_MIN) {
            EXPECT_TRUE(within_relative(t_npdf(t, df, delta), density, kTolerance));
        }
    }
}

TEST(NoncentralT, QuantileInvertsTheSmallerTail) {
    for (const auto& row : read_numbers<4>("noncentral_t.csv")) {
        const double df = row[1];
        const double delta = row[2];
        for (const double p : {row[3], 0.5, 1e-5, 1.0 - 1e-5, 1e-100}) {
            if (p <= 0.0 || p >= 1.0) {
                continue;
            }
            SCOPED_TRACE(testing::Message() << "df " << df << ", delta " << delta << ", p " << p);
            const double t = quantile(p, df, delta);
            if (error_channel.kernel_error_level == conventions::kArgumentTooLarge) {
                EXPECT_LT(df, 1.0);
                EXPECT_EQ(t, -kLargestDouble);
                continue;
            }
            ASSERT_EQ(error_channel.kernel_error_level, 0);
            expect_quantile(t, p, kTolerance, [=](double at) { return tails_at(at, df, delta); });
        }
    }
}

TEST(NoncentralT, NoncentralityZeroIsTheCentralPath) {
    EXPECT_EQ(tails_at(1.3, 7.0, -0.0), tails_of(t_df, 1.3, 7.0));
    EXPECT_EQ(t_npdf(1.3, 7.0, 0.0), t_pdf(1.3, 7.0));
    EXPECT_EQ(quantile(0.3, 7.0, 0.0), quantile_of(inv_t_df, 0.3, 7.0));
}

TEST(NoncentralT, InfiniteArguments) {
    EXPECT_EQ(tails_at(kInfinity, 3.0, 1.0), (Tails{1.0, 0.0}));
    EXPECT_EQ(tails_at(-kInfinity, 3.0, 1.0), (Tails{0.0, 1.0}));
    EXPECT_EQ(t_npdf(kInfinity, 3.0, 1.0), 0.0);
    // The normal kernel stops at 1e-9.
    EXPECT_NEAR(tails_at(3.0, kInfinity, 1.0).upper, 0.022750131948179207, 1e-9 * 0.0227);
    EXPECT_NEAR(quantile(0.975, kInfinity, 1.0), 2.959963984540054, 1e-9);
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
        EXPECT_EQ(tails_at(bad.x, bad.df, bad.delta), kFailedTails);
        EXPECT_EQ(error_channel.kernel_error_level, bad.level);
        EXPECT_STREQ(error_channel.kernel_routine_name, "t_ncdf");
        EXPECT_EQ(t_npdf(bad.x, bad.df, bad.delta), MissingValue);
        EXPECT_EQ(quantile(bad.x, bad.df, bad.delta), -kLargestDouble);
        EXPECT_EQ(error_channel.kernel_error_level, bad.level);
        EXPECT_STREQ(error_channel.kernel_routine_name, "inv_t_ncdf");
    }
    for (const double p : {-0.5, 0.0, 1.0, 2.0, kInfinity}) {
        EXPECT_EQ(quantile(p, 3.0, 1.0), -kLargestDouble);
        EXPECT_EQ(error_channel.kernel_error_level, conventions::kInvalidArgument);
    }
    EXPECT_EQ(quantile(1e-200, 0.01, 1.0), -kLargestDouble);  // beyond the doubles
    EXPECT_EQ(error_channel.kernel_error_level, conventions::kArgumentTooLarge);
}

}  // namespace
}  // namespace vela::test
