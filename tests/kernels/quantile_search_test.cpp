#include "conventions/error_channel.hpp"
#include "kernels/chi_square_quantile.hpp"
#include "kernels/gamma_quantile.hpp"
#include "kernels/positive_quantile.hpp"
#include "support/special_values.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

namespace {

using namespace vela::kernels;
using vela::conventions::error_channel;
using vela::test::kInfinity;
using vela::test::kNaN;

constexpr double kDenormal = std::numeric_limits<double>::denorm_min();

// The search leaves 1e-14 of the tail by its own estimate, twice that in an x that the tail hardly
// feels; a false slope spoils the last step, which comes from an excess of at most 1e-7.
constexpr double kStepError = 4e-14;
constexpr double kFirstOrderError = 1e-6;

struct SearchCase {
    const char* what;
    bool isUpper;
    std::function<TailAndSlope(double)> tail;
    std::function<double(double)> root;
    double tolerance;    // relative, in x
    int maxEvaluations;  // from any start; bisection alone takes 65
};

TailAndSlope exponential(double x) {
    return x < 700.0 ? TailAndSlope{std::exp(-x), x * std::exp(-x), 1.0 - x, -x}
                     : TailAndSlope{0.0, 0.0};
}

TailAndSlope hyperbola(double x) {  // P(X > x) = 1 / (1 + x)
    return {1.0 / (1.0 + x), x / (1.0 + x) / (1.0 + x)};
}

TEST(PositiveQuantileSearch, FindsTheRootFromAnyStart) {
    const SearchCase cases[] = {
        {"exponential upper tail", true, exponential, [](double p) { return -std::log(p); },
         kStepError, 80},
        {"without its bend", true,
         [](double x) {
             return TailAndSlope{exponential(x).tail, exponential(x).slope};
         },
         [](double p) { return -std::log(p); }, kStepError, 80},
        {"power tail", true, hyperbola, [](double p) { return (1.0 - p) / p; }, kStepError, 80},
        {"power law near 0", false,
         [](double x) {
             return TailAndSlope{std::sqrt(std::min(x, 1.0)), 0.5 * std::sqrt(std::min(x, 1.0))};
         },
         [](double p) { return p * p; }, kStepError, 80},
        {"a slope that is a lie is bisected", true,
         [](double x) {
             return TailAndSlope{hyperbola(x).tail, 1e3 * hyperbola(x).slope};
         },
         [](double p) { return (1.0 - p) / p; }, kFirstOrderError, 300},
    };
    for (const SearchCase& c : cases) {
        for (const double p : {1e-280, 1e-20, 1e-3, 0.3, 0.5}) {
            for (const double start :
                 {0.0, kDenormal, 1e-300, 1e-3, 1.0, 50.0, 1e300, kInfinity, kNaN, -1.0}) {
                int evaluations = 0;
                double x = 0.0;
                const auto outcome = find_positive_quantile(
                    p, c.isUpper, start,
                    [&](double at) {
                        ++evaluations;
                        return c.tail(at);
                    },
                    &x);
                if (c.root(p) == 0.0) {
                    continue;  // p^2 below the smallest double
                }
                ASSERT_EQ(outcome, QuantileOutcome::kFound) << c.what << " p " << p;
                ASSERT_NEAR(x / c.root(p), 1.0, c.tolerance)
                    << c.what << " p " << p << " from " << start;
                ASSERT_LE(evaluations, c.maxEvaluations) << c.what << " p " << p;
            }
        }
    }
}

TEST(PositiveQuantileSearch, SaysWhatIsBeyondDoublesAndWhatFails) {
    double x = 1.0;
    const auto slow = [](double at) {
        const double tail = std::exp(-1e-3 * (800.0 + std::log(at)));
        return TailAndSlope{tail, 1e-3 * tail};
    };
    EXPECT_EQ(find_positive_quantile(0.999, true, 1.0, slow, &x), QuantileOutcome::kFound);
    EXPECT_EQ(x, 0.0) << "the root is e^-799";
    EXPECT_EQ(find_positive_quantile(0.2, true, 1.0, slow, &x), QuantileOutcome::kTooLarge);
    const auto failing = [](double) { return TailAndSlope{kNaN, kNaN}; };
    EXPECT_NE(find_positive_quantile(0.2, false, 1.0, failing, &x), QuantileOutcome::kFound);
    const auto jump = [](double at) { return TailAndSlope{at < 3.0 ? 0.7 : 0.1, 0.0}; };
    EXPECT_EQ(find_positive_quantile(0.2, true, 1.0, jump, &x), QuantileOutcome::kNotFound);
}

TEST(GammaQuantile, UndoesTheIncompleteGammaFunctionInTheSmallerTail) {
    for (const double a :
         {1e-3, 0.03, 0.4, 0.5, 0.7, 1.0, 1.5, 3.0, 10.0, 44.0, 300.0, 1e3, 1e4, 1e6, 5e7}) {
        for (const double p : {1e-280, 1e-150, 1e-40, 1e-9, 1e-3, 0.04, 0.2, 0.5, 0.500001, 0.8,
                               0.99, 1.0 - 1e-6, 1.0 - 1e-15}) {
            double x = 0.0;
            inv_gamma_df(p, a, &x);
            ASSERT_EQ(error_channel.kernel_error_level, 0) << "a " << a << " p " << p;
            if (x < 2.3e-288) {
                continue;  // gamma_pq() calls it 0
            }
            double P = 0.0;
            double Q = 0.0;
            gamma_pq(x, a, &P, &Q, nullptr);
            // Where its regions meet, the incomplete gamma function jumps by its own 1e-9.
            EXPECT_NEAR(p <= 0.5 ? P / p : Q / (1.0 - p), 1.0, 1e-9) << "a " << a << " p " << p;
        }
    }
}

TEST(GammaQuantile, ReportsWhatItCannotDo) {
    constexpr double failed = -std::numeric_limits<double>::max();
    const struct {
        double p, a, x;
        int level;
    } cases[] = {
        {0.0, 2.0, 0.0, 0},     {0.5, 1e-4, 0.0, 0},    {1.0, 2.0, failed, 2},
        {-0.1, 2.0, failed, 2}, {kNaN, 2.0, failed, 2}, {0.5, 0.0, failed, 2},
        {0.5, kNaN, failed, 2}, {0.5, 1e8, failed, 2},  {1e-300, 300.0, failed, 3},
    };
    for (const auto& c : cases) {
        double x = 1.0;
        inv_chi2_df(c.p, 2.0 * c.a, &x);
        EXPECT_EQ(x, c.x) << c.p << ", " << c.a;
        EXPECT_EQ(error_channel.kernel_error_level, c.level) << c.p << ", " << c.a;
        EXPECT_STREQ(error_channel.kernel_routine_name, "inv_chi2_df");
    }
}

}  // namespace
