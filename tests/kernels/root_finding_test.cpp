#include "conventions/status.hpp"
#include "kernels/gamma_newton.hpp"
#include "kernels/real_functions.hpp"
#include "kernels/regula_falsi_root.hpp"
#include "vela/chi_sq.hpp"
#include "vela/f.hpp"
#include "vela/gamma.hpp"
#include "vela/missing_value.hpp"
#include "vela/neg_binomial.hpp"
#include "vela/t.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

namespace {

using namespace vela::kernels;
using vela::MissingValue;

constexpr bool kReal = false;
constexpr bool kInteger = true;

/// Any function with an absolute tolerance of 1e-12 in x and in f, counting its evaluations.
class TestFunction : public CmRealFunction {
public:
    TestFunction(bool isInteger, std::function<double(double)> f)
        : CmRealFunction(isInteger, 0.0, {1e-12, 0.0, 1e-12, 0.0}), m_f(std::move(f)) {}
    double evaluate(double x) override {
        ++evaluations;
        return m_f(x);
    }
    int evaluations = 0;

private:
    std::function<double(double)> m_f;
};

TEST(RegulaFalsi, RootStatusAndEffort) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr int success = 0, missing = 30020, noRoot = 30021;
    const struct {
        const char* what;
        bool isInteger;
        double a, b;
        std::function<double(double)> f;
        double root;
        int status;
        int maxEvaluations;
    } cases[] = {
        {"simple", kReal, 0, 2, [](double x) { return x * x - 2; }, std::sqrt(2.0), success, 50},
        {"falling", kReal, 0, 2, [](double x) { return 2 - x * x; }, std::sqrt(2.0), success, 50},
        {"flat left side needs the halving", kReal, 0, 2,
         [](double x) { return std::pow(x, 20) - 1; }, 1.0, success, 70},
        {"tiny values keep their signs", kReal, -1, 2, [](double x) { return x * 1e-200; }, 0.0,
         success, 3},
        {"left end is a root", kReal, 3, 4, [](double x) { return x - 3; }, 3.0, success, 2},
        {"right end is a root", kReal, 3, 4, [](double x) { return 4 - x; }, 4.0, success, 2},
        {"root at an end needs no sign change", kReal, 0, 1, [](double x) { return x * x; }, 0.0,
         success, 2},
        {"no sign change", kReal, 1, 2, [](double x) { return x; }, MissingValue, noRoot, 2},
        {"missing left end", kReal, 0, 1, [](double x) { return x > 0 ? 1 : MissingValue; },
         MissingValue, missing, 2},
        {"missing right end", kReal, 0, 1, [](double x) { return x < 1 ? -1 : MissingValue; },
         MissingValue, missing, 2},
        {"NaN inside ends at the cap", kReal, 0, 1,
         [](double x) { return x == 0 || x == 1 ? 2 * x - 1 : nan; }, MissingValue, noRoot, 10002},
        {"NaN at both ends", kReal, 0, 1, [](double) { return nan; }, MissingValue, noRoot, 2},
        {"step function", kInteger, 0, 1000, [](double x) { return std::floor(x) < 618 ? -1 : 1; },
         618.0, success, 100},
        {"falling step function", kInteger, 0, 1000,
         [](double x) { return std::floor(x) < 618 ? 1 : -1; }, 618.0, success, 100},
        {"integer root itself", kInteger, 0, 10, [](double x) { return x - 7; }, 7.0, success, 20},
        {"next integer after a fraction", kInteger, 0, 10, [](double x) { return x - 6.5; }, 7.0,
         success, 20},
        {"long way in few steps", kInteger, 0, 1e15,
         [](double x) { return x < 1e15 - 1 ? -1e-3 : 1e9; }, 1e15 - 1, success, 300},
        {"right end is rounded", kInteger, 3, 6.9999999999999,
         [](double x) { return x > 6 ? 0 : -1; }, 7.0, success, 2},
    };
    for (const auto& c : cases) {
        TestFunction f(c.isInteger, c.f);
        int status = -1;
        const double root = regula_falsi_root(c.a, c.b, f, &status);
        EXPECT_EQ(status, c.status) << c.what;
        EXPECT_NEAR(root, c.root, c.root == MissingValue ? 0.0 : 1e-12) << c.what;
        EXPECT_LE(f.evaluations, c.maxEvaluations) << c.what;
    }
}

TEST(RealFunction, IntervalTestIsStrictAndValueTestInclusive) {
    struct Plain : CmRealFunction {
        Plain(bool isInteger, double target)
            : CmRealFunction(isInteger, target, {0.5, 0.25, 0.125, 0.0625}) {}
        double evaluate(double x) override { return x; }
    };
    const Plain real(kReal, -8.0);
    EXPECT_FALSE(real.interval_converged(0.0, 0.5));
    EXPECT_TRUE(real.interval_converged(0.0, std::nextafter(0.5, 0.0)));
    EXPECT_FALSE(real.interval_converged(-8.0, -6.0));
    EXPECT_TRUE(real.interval_converged(-8.0, std::nextafter(-6.0, -8.0)));
    EXPECT_TRUE(real.value_converged(-0.5));  // 8 times 0.0625
    EXPECT_FALSE(real.value_converged(std::nextafter(0.5, 1.0)));
    EXPECT_TRUE(Plain(kReal, 0.0).value_converged(0.125));
    const Plain integer(kInteger, 0.0);
    EXPECT_TRUE(integer.interval_converged(1.0, std::nextafter(3.0, 0.0)));
    EXPECT_FALSE(integer.interval_converged(1.0, 3.0));
}

TEST(Equations, HaveTheirRootsAtTheQuantiles) {
    constexpr double p = 0.8;
    CmTCdf t(4.5, 0.7, p), noT(-4.5, 0.7, p);
    CmChiSqCdf chiSq(4.5, 0.7, p), noChiSq(-4.5, 0.7, p);
    CmFCdf f(4.5, 7.5, 0.7, p), noF(-4.5, 7.5, 0.7, p);
    CmGammaCdf gamma(4.5, p), noGamma(-4.5, p);
    CmNegBinomialCdf negBinomial(0.3, 4.5, p), noNegBinomial(2.0, 4.5, p);
    const struct {
        CmRealFunction& equation;
        CmRealFunction& invalid;
        double quantile;
    } cases[] = {{t, noT, vela::TInvCdf(p, 4.5, 0.7)},
                 {chiSq, noChiSq, vela::ChiSqInvCdf(p, 4.5, 0.7)},
                 {f, noF, vela::FInvCdf(p, 4.5, 7.5, 0.7)},
                 {gamma, noGamma, vela::GammaInvCdf(p, 4.5, 1.0, 0.0)},
                 {negBinomial, noNegBinomial, vela::NegBinomialInvCdf(p, 0.3, 4.5)}};
    for (const auto& c : cases) {
        int status = -1;
        EXPECT_NEAR(regula_falsi_root(0.0, 100.0, c.equation, &status), c.quantile, 1e-9);
        EXPECT_EQ(status, 0);
        EXPECT_EQ(c.equation.evaluate(-1e30), -p);
        EXPECT_EQ(c.invalid.evaluate(1.0), MissingValue);
    }
    EXPECT_NEAR(negBinomial.evaluate(0.0), std::pow(0.3, 4.5) - p, 1e-15);
    EXPECT_EQ(CmStandardNormalCdf(0.2).evaluate(0.0), 0.5 - 0.2);
}

// Of 50 trials at 0.3, the ratio exceeds 3.84 from 22 events on.
TEST(CmLRatio, EndsTheLikelihoodInterval) {
    CmLRatio equation(50.0, 0.3, 3.84);
    int status = -1;
    EXPECT_EQ(regula_falsi_root(15.0, 50.0, equation, &status), 22.0);
    EXPECT_NEAR(equation.evaluate(21.9), 3.2248045109204438693 - 3.84, 1e-14);
    EXPECT_NEAR(equation.evaluate(0.0), 100.0 * -std::log(0.7) - 3.84, 1e-13);
    EXPECT_EQ(equation.evaluate(51.0), MissingValue);
}

TEST(GammaNewton, StaysAtTheRoot) {
    double P = 0.0, Q = 0.0, f = 0.0;
    gamma_pq(3.25, 2.5, &P, &Q, &f);
    double x = 3.25;
    gamma_newton(P, 2.5, &x, 'L');
    EXPECT_EQ(x, 3.25);
}

}  // namespace
