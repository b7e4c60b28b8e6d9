#include "conventions/error_channel.hpp"
#include "kernels/chi_square.hpp"
#include "kernels/chi_square_quantile.hpp"
#include "kernels/f_central.hpp"
#include "kernels/noncentral_chi_square.hpp"
#include "kernels/noncentral_f.hpp"
#include "kernels/tails.hpp"
#include "support/csv.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>

namespace vela::test {
namespace {

using namespace kernels;
using conventions::error_channel;

// The largest error measured is 1.4e-12, at a noncentrality of 4e6, where each of 2e4 Poisson
// weights has rounded once more than its neighbour; up to 1e4 it is 2e-13.
constexpr double kTolerance = 2e-12;

/// Noncentral F, or chi-square for an infinite df2.
Tails tails_at(double x, double df1, double df2, double noncentrality) {
    return df2 > DBL_MAX ? tails_of(chi2_ncdf, x, df1, noncentrality)
                         : tails_of(F_ncdf, x, df1, df2, noncentrality);
}

double quantile(double p, double df1, double df2, double noncentrality) {
    return df2 > DBL_MAX ? quantile_of(inv_chi2_ncdf, p, df1, noncentrality)
                         : quantile_of(inv_F_ncdf, p, df1, df2, noncentrality);
}

TEST(Noncentral, BothTailsKeepRelativeAccuracyAndQuantilesInvertTheSmaller) {
    for (const auto& row : read_numbers<6>("noncentral.csv")) {
        const double df1 = row[1], df2 = row[2], noncentrality = row[3];
        SCOPED_TRACE(testing::PrintToString(row));
        const auto at = [=](double x) { return tails_at(x, df1, df2, noncentrality); };
        const Tails tails = at(row[0]);
        EXPECT_EQ(error_channel.kernel_error_level, 0);
        EXPECT_TRUE(within_relative(tails, {row[4], row[5]}, kTolerance)) << tails;
        for (const double p : {row[4], 0.5, 1e-5, 1.0 - 1e-5, 1e-100}) {
            const double x = quantile(p, df1, df2, noncentrality);
            if (p >= 1.0 || error_channel.kernel_error_level == conventions::kArgumentTooLarge) {
                EXPECT_TRUE(p >= 1.0 || df2 < 1.0) << p;
                EXPECT_EQ(x, -kLargestDouble);
                continue;
            }
            ASSERT_EQ(error_channel.kernel_error_level, 0) << p;
            if (x < DBL_MIN) {
                // A quantile below the doubles; few degrees of freedom have them at any p.
                const Tails smallest = at(std::max(x, DBL_TRUE_MIN));
                EXPECT_GE(p > 0.5 ? smallest.upper : smallest.lower,
                          (p > 0.5 ? 1.0 - p : p) * (1.0 - 1e-12));
                continue;
            }
            expect_quantile(x, p, kTolerance, at, 1.0);  // 0.7 ulp off at x = 4e6
        }
    }
}

TEST(Noncentral, NoncentralityZeroIsTheCentralPath) {
    EXPECT_EQ(tails_of(chi2_ncdf, 3.3, 5.0, 0.0), tails_of(chi2_df, 3.3, 5.0));
    EXPECT_EQ(tails_of(F_ncdf, 1.3, 5.0, 9.0, 0.0), tails_of(f_df, 1.3, 5.0, 9.0));
    EXPECT_EQ(quantile_of(inv_chi2_ncdf, 0.3, 5.0, 0.0), quantile_of(inv_chi2_df, 0.3, 5.0));
}

TEST(Noncentral, InfiniteDenominatorIsChiSquare) {
    EXPECT_EQ(tails_of(F_ncdf, 2.0, 4.0, kInfinity, 3.0), tails_of(chi2_ncdf, 8.0, 4.0, 3.0));
}

TEST(Noncentral, BadArgumentsAreReported) {
    const struct {
        double x, df1, df2, noncentrality;
        int level;
    } table[] = {{kNaN, 1.0, 1.0, 1.0, 2},  {0.5, kNaN, 1.0, 1.0, 2}, {0.5, 1.0, 1.0, kNaN, 2},
                 {0.5, 0.0, 1.0, 1.0, 2},   {0.5, 1.0, 0.0, 1.0, 2},  {0.5, 1.0, 1.0, -1.0, 2},
                 {0.5, 1.0, 1.0, 1e300, 3}, {0.5, 1e15, 1.0, 1.0, 3}, {0.5, 1e-30, 1.0, 1.0, 3}};
    for (const auto& bad : table) {
        SCOPED_TRACE(testing::Message() << &bad - table);
        EXPECT_EQ(tails_at(bad.x, bad.df1, bad.df2, bad.noncentrality), kFailedTails);
        EXPECT_EQ(error_channel.kernel_error_level, bad.level);
        EXPECT_STREQ(error_channel.kernel_routine_name, "F_ncdf");
        EXPECT_EQ(quantile(bad.x, bad.df1, bad.df2, bad.noncentrality), -kLargestDouble);
        EXPECT_EQ(error_channel.kernel_error_level, bad.level);
    }
}

}  // namespace
}  // namespace vela::test
