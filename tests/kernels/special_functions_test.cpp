#include "kernels/fuzzy_compare.hpp"
#include "kernels/guarded.hpp"
#include "kernels/incomplete_gamma.hpp"
#include "kernels/lanczos.hpp"
#include "kernels/stirling.hpp"
#include "support/special_values.hpp"
#include "support/threads.hpp"
#include "vela/v2/psi.hpp"

#include <gtest/gtest.h>

#include <cerrno>
#include <cmath>
#include <functional>
#include <limits>
#include <stdexcept>
#include <string>

namespace {

using namespace vela::kernels;

using vela::test::kInfinity;
using vela::test::kNaN;
constexpr double kMax = std::numeric_limits<double>::max();

TEST(FuzzyCompare, ToleranceIsRelativeWithAnAbsoluteFloor) {
    constexpr struct {
        double a, b, scale;
        int expected;
    } cases[] = {
        {1.0, 1.0 + 9e-13, 0.0, 0},   {1.0, 1.0 + 1.1e-12, 0.0, -1},
        {1.0 + 1.1e-12, 1.0, 0.0, 1}, {1e6, 1e6 + 9e-7, 0.0, 0},
        {1e6, 1e6 + 1.1e-6, 0.0, -1}, {0.0, 9e-31, 0.0, 0},
        {0.0, 1.1e-30, 0.0, -1},      {0.0, 9e-15, 1.0, 0},  // a scale replaces the floor
        {0.0, 1.1e-14, 1.0, -1},      {-9e-13, 0.0, 100.0, 0},
        {kInfinity, 1.0, 0.0, 0},  // callers that test for integers guard infinities
    };
    for (const auto& c : cases) {
        EXPECT_EQ(fuzzy_compare(c.a, c.b, c.scale), c.expected) << c.a << " and " << c.b;
    }
}

template <class Exception>
std::string message_of(const std::function<double()>& call) {
    try {
        call();
    } catch (const Exception& e) {
        return e.what();
    }
    return "nothing thrown";
}

TEST(GuardedFunctions, AnswerDomainErrorsAndOverflowWithTheirMessages) {
    const struct {
        std::string message;
        std::function<double()> call;
    } domain[] = {
        {"sqrt of a negative argument", [] { return safe_sqrt(-1e-300); }},
        {"sqrt of a negative argument", [] { return safe_sqrt(kNaN); }},
        {"log of a negative argument", [] { return safe_log(-1.0); }},
        {"log of a negative argument", [] { return safe_log(kNaN); }},
        {"negative number raised to a noninteger power", [] { return safe_pow(-8.0, 1.0 / 3.0); }},
        {"zero raised to a negative power", [] { return safe_pow(0.0, -1.0); }},
        {"gamma of a nonpositive argument", [] { return safe_lgamma(0.0); }},
        {"gamma of a nonpositive argument", [] { return safe_lgamma(-1e-17); }},
        {"gamma of a value too close to 0", [] { return safe_lgamma(1e-17); }},
    };
    for (const auto& c : domain) {
        EXPECT_EQ(message_of<std::invalid_argument>(c.call), c.message);
    }
    const std::function<double()> overflow[] = {
        [] { return safe_exp(std::nextafter(exp_overflow_bound, kInfinity)); },
        [] { return safe_log(0.0); },
        [] { return safe_log(-0.0); },
        [] { return safe_pow(2.0, 1025.0); },
        [] { return safe_pow(-1e200, 2.0); },
        []() -> double { throw_float_overflow(); },
    };
    for (const auto& call : overflow) {
        EXPECT_EQ(message_of<std::runtime_error>(call), "float overflow");
    }
}

TEST(GuardedFunctions, ValuesAtTheirBounds) {
    EXPECT_EQ(exp_overflow_bound, std::nextafter(std::log(kMax), 0.0));
    EXPECT_EQ(safe_exp(exp_overflow_bound), std::exp(exp_overflow_bound));
    EXPECT_EQ(safe_exp(std::nextafter(-exp_overflow_bound, -kInfinity)), 0.0);
    EXPECT_GT(safe_exp(-exp_overflow_bound), 0.0);
    EXPECT_EQ(safe_pow(-2.0, 3.0000000000001), -8.0);  // the exponent is rounded
    EXPECT_EQ(safe_pow(-2.0, -2000.0), 0.0);
    EXPECT_EQ(safe_pow(0.0, 0.0), 1.0);
    EXPECT_EQ(safe_lgamma(1.0), 0.0);
    EXPECT_EQ(safe_lgamma(2.0), 0.0);
}

TEST(GuardedFunctions, RaiseNoFaultOnTheWayToAnOrdinaryAnswer) {
    const struct {
        double base, exponent, expected;
    } cases[] = {
        {10.0, -kMax, 0.0},     {1e-300, kMax, 0.0},
        {-2.0, -kMax, 0.0},     {1.0, kMax, 1.0},
        {1.0, -kInfinity, 1.0}, {-2.0, -kInfinity, 0.0},
        {0.0, kMax, 0.0},       {1.0 + 2e-16, 1e16, std::pow(1.0 + 2e-16, 1e16)},
    };
    vela::test::on_thread(vela::test::Registration::kRegistered, [&] {
        for (const auto& c : cases) {
            vela::SetKroFpuStates();
            EXPECT_EQ(safe_pow(c.base, c.exponent), c.expected)
                << c.base << " to the " << c.exponent;
        }
        EXPECT_EQ(message_of<std::runtime_error>([] { return safe_pow(10.0, kMax); }),
                  "float overflow");
        vela::ResetFpuStates();
    });
}

// Exact factorials, harmonic numbers and constants, to the accuracy that each method is built for.
TEST(GammaFunctions, AgreeWithExactValues) {
    const double euler = 0.57721566490153286;
    const double factorial20 = 2432902008176640000.0;
    const struct {
        const char* what;
        double actual, expected, relative;
    } cases[] = {
        // The first omitted term of Stirling's series at 10 is 3e-17 of the function.
        {"gamma(21)", gamma_stirling(21.0), factorial20, 1e-14},
        {"gamma(1/2)", gamma_stirling(0.5), 1.7724538509055160, 1e-14},
        {"lgamma(21)", lgamma_stirling(21.0), std::log(factorial20), 1e-15},
        {"remainder(20)", stirling_remainder(20.0),
         std::log(factorial20) - 20.0 * std::log(20.0) + 20.0, 1e-14},
        // Nine Lanczos coefficients carry about 13 digits.
        {"safe_lgamma(21)", safe_lgamma(21.0), std::log(factorial20), 1e-12},
        {"safe_lgamma(1/2)", safe_lgamma(0.5), 0.57236494292470009, 1e-12},
        {"C(60, 30)", std::exp(log_binomial(60, 30)), 118264581564861424.0, 1e-11},
        // 1/(12 x^9), deliberate, is 8e-11 at x = 10.
        {"Psi(1)", vela::v2::Psi(1.0), -euler, 2e-10},
        {"Psi(20)", vela::v2::Psi(20.0), 3.5477396571436819 - euler, 1e-12},
        {"expm1(1e-9)", expm1_accurate(1e-9), 1.0000000005000000e-9, 1e-15},
        {"expm1(-0.01)", expm1_accurate(-0.01), -0.0099501662508319466, 1e-15},
    };
    for (const auto& c : cases) {
        EXPECT_NEAR(c.actual / c.expected, 1.0, c.relative) << c.what;
    }
    EXPECT_EQ(log_binomial(0, 3), 0.0);
    EXPECT_EQ(log_binomial(3, 4), -kInfinity);
}

TEST(UnguardedFunctions, ReportThroughErrno) {
    const struct {
        std::function<double()> call;
        double expected;
        int error;
    } cases[] = {
        {[] { return gamma_stirling(0.0); }, 0.0, EDOM},
        {[] { return gamma_stirling(-1.5); }, 0.0, EDOM},
        {[] { return gamma_stirling(172.0); }, kMax, ERANGE},
        {[] { return lgamma_stirling(0.0); }, -kMax, EDOM},
        {[] { return stirling_remainder(-1e-9); }, kMax, EDOM},
        {[] { return stirling_remainder(0.0); }, 0.0, 0},
        {[] { return expm1_accurate(-662.345); }, -kMax, EDOM},
        {[] { return expm1_accurate(709.783); }, -kMax, EDOM},
        {[] { return expm1_accurate(0.0); }, 0.0, 0},
    };
    for (const auto& c : cases) {
        errno = c.error == 0 ? EINVAL : 0;  // success clears what an earlier failure left
        EXPECT_EQ(c.call(), c.expected);
        EXPECT_EQ(errno, c.error);
    }
}

}  // namespace
