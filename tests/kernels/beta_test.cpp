#include "kernels/beta.hpp"

#include "conventions/error_channel.hpp"
#include "kernels/student_t.hpp"
#include "kernels/tails.hpp"
#include "support/csv.hpp"

#include <gtest/gtest.h>

namespace vela::test {
namespace {

using conventions::error_channel;
using kernels::beta_df;

// The promise of the kernel for each tail by itself.
constexpr double kTolerance = 1e-13;

Tails beta(double x, double y, double a, double b) { return tails_of(beta_df, x, y, a, b); }

TEST(Beta, EachTailKeepsRelativeAccuracyAndExchangesExactly) {
    for (const auto& [x, y, a, b, lower, upper] : read_numbers<6>("beta.csv")) {
        SCOPED_TRACE(testing::Message() << "x " << x << " a " << a << " b " << b);
        const Tails tails = beta(x, y, a, b);
        EXPECT_EQ(error_channel.kernel_error_level, 0);
        EXPECT_TRUE(within_relative(tails, {lower, upper}, kTolerance)) << tails;
        if (x != y && a != b) {  // the tie of the two sides is broken the same way in both calls
            EXPECT_EQ(beta(y, x, b, a), (Tails{tails.upper, tails.lower}));
            EXPECT_NEAR(tails.lower + tails.upper, 1.0, 2.3e-16);
        }
    }
}

// A step of the wrong sign where one method hands over to the next would break the order; steps of
// x are wide enough that the rounding of two methods cannot.
TEST(Beta, TailsAreMonotoneAcrossRegions) {
    const double shapes[][2] = {{0.01, 40.0}, {0.9, 1.1},   {5.0, 0.7},   {15.0, 1.0},
                                {39.0, 41.0}, {1.5, 900.0}, {60.0, 60.0}, {500.0, 3.0},
                                {4e3, 9e3},   {1e-3, 1e-3}};
    for (const auto& [a, b] : shapes) {
        Tails previous{0.0, 1.0};
        for (int i = 1; i < 2000; ++i) {
            const double x = i / 2000.0;
            const Tails tails = beta(x, 1.0 - x, a, b);
            ASSERT_LE(error_channel.kernel_error_level, 1) << a << " " << b << " " << x;
            EXPECT_TRUE(tails.lower >= previous.lower * (1.0 - kTolerance) &&
                        tails.upper <= previous.upper * (1.0 + kTolerance))
                << a << " " << b << " " << x;
            previous = tails;
        }
    }
}

// Half of I_x(df/2, 1/2) is a tail of Student's t, which has methods of its own. At df = 1e8 the
// ratio t^2 / df must arrive with more digits than a double x has.
TEST(Beta, RatioFormAgreesWithStudentT) {
    for (const double df : {0.7, 5.0, 40.0, 1e4, 1e8}) {
        const kernels::BetaShapes shapes(0.5 * df, 0.5);
        for (const double t : {0.01, 0.7, 2.5, 9.0, 35.0}) {
            Tails tails;
            const auto point = kernels::BetaPoint::from_ratio(kernels::two_product(t, t) / df);
            EXPECT_TRUE(shapes.tails(point, &tails.lower, &tails.upper));
            const double expected = tails_of(kernels::t_df, t, df).upper;
            EXPECT_NEAR(0.5 * tails.lower, expected, kTolerance * expected) << t << " " << df;
        }
    }
}

TEST(Beta, VanishingTailIsZeroWithWarning) {
    EXPECT_EQ(beta(1e-6, 1.0 - 1e-6, 200.0, 3.0), (Tails{0.0, 1.0}));
    EXPECT_EQ(error_channel.kernel_error_level, conventions::kWarning);
    EXPECT_STREQ(error_channel.kernel_routine_name, "beta_df");
}

TEST(Beta, EndPointsAreExactWithoutWarning) {
    EXPECT_EQ(beta(0.0, 1.0, 2.0, 3.0), (Tails{0.0, 1.0}));
    EXPECT_EQ(beta(1.0, 0.0, 2.0, 3.0), (Tails{1.0, 0.0}));
    EXPECT_EQ(error_channel.kernel_error_level, 0);
}

TEST(Beta, BadArgumentsReportTheirLevel) {
    const struct {
        double x, y, a, b;
        int level;
    } cases[] = {
        {kNaN, 0.5, 1, 1, 2},    {0.5, kNaN, 1, 1, 2},     {0.5, 0.5, kNaN, 1, 2},
        {0.5, 0.5, 1, kNaN, 2},  {-0.1, 1.1, 1, 1, 2},     {1.1, -0.1, 1, 1, 2},
        {0.5, 0.5, 0, 1, 2},     {0.5, 0.5, 1, -1, 2},     {0.5, 0.5, kInfinity, 1, 3},
        {0.5, 0.5, 1, 1e200, 3}, {0.5, 0.5, 1e-310, 1, 3}, {kInfinity, 0.5, 1, 1, 2},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(beta(c.x, c.y, c.a, c.b), kFailedTails);
        EXPECT_EQ(error_channel.kernel_error_level, c.level) << c.x << " " << c.a << " " << c.b;
    }
}

}  // namespace
}  // namespace vela::test
