#include "conventions/error_channel.hpp"
#include "kernels/chi_square.hpp"
#include "kernels/chi_square_quantile.hpp"
#include "kernels/f_central.hpp"
#include "kernels/limits.hpp"
#include "kernels/noncentral_chi_square.hpp"
#include "kernels/noncentral_f.hpp"
#include "support/csv.hpp"

#include <gtest/gtest.h>

#include <algorithm>
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

// The largest error measured is 1.4e-12, at a noncentrality of 4e6, where each of 2e4 Poisson
// weights has rounded once more than its neighbour; up to 1e4 it is 2e-13.
constexpr double kTolerance = 2e-12;

/// An infinite df2 stands for the chi-square distribution.
struct Case {
    double x, df1, df2, noncentrality;

    std::string describe() const {
        return "x " + std::to_string(x) + ", df " + std::to_string(df1) + ", " +
               std::to_string(df2) + ", noncentrality " + std::to_string(noncentrality);
    }
    void tails(double* lower, double* upper) const {
        df2 > DBL_MAX ? chi2_ncdf(x, df1, noncentrality, lower, upper)
                      : F_ncdf(x, df1, df2, noncentrality, lower, upper);
    }
    void quantile(double p, double* found) const {
        df2 > DBL_MAX ? inv_chi2_ncdf(p, df1, noncentrality, found)
                      : inv_F_ncdf(p, df1, df2, noncentrality, found);
    }
};

struct Reference {
    Case at;
    double lower, upper;
};

std::vector<Reference> reference() {
    std::vector<Reference> rows;
    for (const auto& row : test::read_csv("noncentral.csv")) {
        const auto field = [&](std::size_t i) { return test::parse_double(row.at(i)); };
        rows.push_back({{field(0), field(1), field(2), field(3)}, field(4), field(5)});
    }
    return rows;
}

double relative_error(double got, double expected) { return std::fabs(got / expected - 1.0); }

TEST(Noncentral, BothTailsKeepRelativeAccuracy) {
    for (const Reference& row : reference()) {
        double lower = 0.0, upper = 0.0;
        row.at.tails(&lower, &upper);
        EXPECT_EQ(error_channel.kernel_error_level, 0) << row.at.describe();
        EXPECT_LE(relative_error(lower, row.lower), kTolerance) << row.at.describe();
        EXPECT_LE(relative_error(upper, row.upper), kTolerance) << row.at.describe();
    }
}

TEST(Noncentral, QuantileInvertsTheSmallerTail) {
    for (const Reference& row : reference()) {
        for (const double p : {row.lower, 0.5, 1e-5, 1.0 - 1e-5, 1e-100}) {
            Case found = row.at;
            row.at.quantile(p, &found.x);
            if (p >= 1.0 || error_channel.kernel_error_level == conventions::kArgumentTooLarge) {
                EXPECT_TRUE(p >= 1.0 || row.at.df2 < 1.0) << row.at.describe();
                EXPECT_EQ(found.x, -kLargestDouble);
                continue;
            }
            ASSERT_EQ(error_channel.kernel_error_level, 0) << row.at.describe() << ", p " << p;
            const double target = p <= 0.5 ? p : 1.0 - p;
            double tails[2] = {}, next[2] = {};
            if (found.x < DBL_MIN) {
                // A quantile below the doubles; few degrees of freedom have them at any p.
                found.x = std::max(found.x, DBL_TRUE_MIN);
                found.tails(&tails[0], &tails[1]);
                EXPECT_GE(tails[p > 0.5], target * (1.0 - 1e-12)) << row.at.describe();
                continue;
            }
            found.tails(&tails[0], &tails[1]);
            const double got = tails[p > 0.5];
            // What the neighbouring double gives bounds what any double can.
            found.x = std::nextafter(found.x, kInfinity);
            found.tails(&next[0], &next[1]);
            EXPECT_LE(std::fabs(got - target), kTolerance * target + std::fabs(next[p > 0.5] - got))
                << row.at.describe() << ", p " << p;
        }
    }
}

TEST(Noncentral, NoncentralityZeroIsTheCentralPath) {
    double lower = 0.0, upper = 0.0, centralLower = 0.0, centralUpper = 0.0, x = 0.0, central = 0.0;
    chi2_ncdf(3.3, 5.0, 0.0, &lower, &upper);
    chi2_df(3.3, 5.0, &centralLower, &centralUpper);
    EXPECT_EQ(lower, centralLower);
    EXPECT_EQ(upper, centralUpper);
    F_ncdf(1.3, 5.0, 9.0, 0.0, &lower, &upper);
    f_df(1.3, 5.0, 9.0, &centralLower, &centralUpper);
    EXPECT_EQ(lower, centralLower);
    EXPECT_EQ(upper, centralUpper);
    inv_chi2_ncdf(0.3, 5.0, 0.0, &x);
    inv_chi2_df(0.3, 5.0, &central);
    EXPECT_EQ(x, central);
}

TEST(Noncentral, InfiniteDenominatorIsChiSquare) {
    double lower = 0.0, upper = 0.0, chiLower = 0.0, chiUpper = 0.0;
    F_ncdf(2.0, 4.0, kInfinity, 3.0, &lower, &upper);
    chi2_ncdf(8.0, 4.0, 3.0, &chiLower, &chiUpper);
    EXPECT_EQ(lower, chiLower);
    EXPECT_EQ(upper, chiUpper);
}

TEST(Noncentral, BadArgumentsAreReported) {
    const struct {
        Case at;
        int level;
    } table[] = {
        {{kNaN, 1.0, 1.0, 1.0}, 2},  {{0.5, kNaN, 1.0, 1.0}, 2}, {{0.5, 1.0, 1.0, kNaN}, 2},
        {{0.5, 0.0, 1.0, 1.0}, 2},   {{0.5, 1.0, 0.0, 1.0}, 2},  {{0.5, 1.0, 1.0, -1.0}, 2},
        {{0.5, 1.0, 1.0, 1e300}, 3}, {{0.5, 1e15, 1.0, 1.0}, 3}, {{0.5, 1e-30, 1.0, 1.0}, 3}};
    for (const auto& bad : table) {
        double lower = 0.0, upper = 0.0, x = 0.0;
        bad.at.tails(&lower, &upper);
        EXPECT_EQ(error_channel.kernel_error_level, bad.level) << bad.at.describe();
        EXPECT_STREQ(error_channel.kernel_routine_name, "F_ncdf");
        EXPECT_EQ(lower, kLargestDouble);
        EXPECT_EQ(upper, kLargestDouble);
        bad.at.quantile(bad.at.x, &x);
        EXPECT_EQ(error_channel.kernel_error_level, bad.level) << bad.at.describe();
        EXPECT_EQ(x, -kLargestDouble);
    }
}

}  // namespace
}  // namespace vela::kernels
