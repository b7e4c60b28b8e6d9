// Noncentral t as a mixture of beta probabilities (Benton & Krishnamoorthy, 2003). For t > 0, with
// x = t^2 / (df + t^2), b = df / 2, lambda = delta^2 / 2 and J_a = 1 - I_x(a, b),
//     P(T > t) = 1/2 sum_j e^-lambda [ lambda^j / j!                     J_(j + 1/2)
//                                    + delta lambda^j / (sqrt(2) Gamma(j + 3/2)) J_(j + 1) ].
// J_(1/2) is twice the central upper tail and J_1 = (1 - x)^b; each further J adds one positive
// term. So a small upper tail loses nothing, and 20 to 50 cheap terms beat the integral. The
// density comes along: t times the derivative of I_x(a, b) is 2 a (J_(a + 1) - J_a).
//
// For delta < 0 the two halves are subtracted. The result is used only where little of it cancels.

#include "kernels/noncentral_t_mixture.hpp"

#include "kernels/student_t.hpp"

#include <cmath>

namespace vela::kernels {
namespace {

/// One of the two sums: the weight of the mixture, J_a and J_(a + 1) - J_a.
struct Half {
    double weight;
    double tail;
    double step;
    double a;
    double tailSum = 0.0;
    double slopeSum = 0.0;

    /// Adds a term and moves on; `divisor` belongs to the next weight.
    void add(double lambda, double x, double b, double divisor) {
        tailSum += weight * tail;
        slopeSum += weight * a * step;
        weight *= lambda / divisor;
        tail += step;
        step *= x * ((a + b) / (a + 1.0));
        a += 1.0;
    }

    /// Whether the next terms are too small to matter.
    bool is_complete() const {
        constexpr double tolerance = 1e-17;
        return weight * tail <= tolerance * tailSum && weight * a * step <= tolerance * slopeSum;
    }
};

/// Where the sum is short and its ingredients neither overflow nor come near the denormals.
bool is_suited(double t, double df, double delta) {
    return std::fabs(delta) <= 6.0 && df >= 0.5 && df <= 1e7 && t > 1e-3 && t < 1e3 &&
           -delta * t < 2.5;
}

/// The halves together, or -1 if that cancels too much.
double combine(double even, double odd, double delta) {
    if (delta > 0.0) {
        return even + odd;
    }
    constexpr double leastDifference = 0.01;
    const double difference = even - odd;
    return difference > leastDifference * even ? difference : -1.0;
}

}  // namespace

MixtureResult noncentral_t_mixture(double t, double df, double delta) {
    if (!is_suited(t, df, delta)) {
        return {};
    }
    constexpr double smallestLog = -570.0;  // of (1 - x)^b; below it terms might underflow
    constexpr int maxTerms = 200;
    const double b = 0.5 * df;
    const double ratio = t * t / df;
    if (-b * std::log1p(ratio) < smallestLog) {
        return {};
    }
    const double x = ratio / (1.0 + ratio);
    const CentralT central(df);
    double centralLower = 0.0;
    double centralUpper = 0.0;
    central.tails(t, &centralLower, &centralUpper);
    const double density = central.density(t);
    const double first = density / central.peak() * std::sqrt(1.0 + ratio);  // (1 - x)^b
    const double lambda = 0.5 * delta * delta;
    const double poisson = std::exp(-lambda);
    constexpr double sqrtTwoOverPi = 0.7978845608028654;  // 1 / (sqrt(2) Gamma(3/2))
    Half even = {poisson, 2.0 * centralUpper, 2.0 * t * density, 0.5};
    Half odd = {poisson * std::fabs(delta) * sqrtTwoOverPi, first, b * x * first, 1.0};
    bool isComplete = false;
    for (int j = 0; j < maxTerms && !isComplete; ++j) {
        even.add(lambda, x, b, j + 1.0);
        odd.add(lambda, x, b, j + 1.5);
        // Beyond lambda the terms fall ever faster.
        isComplete = j > lambda && even.is_complete() && odd.is_complete();
    }
    if (!isComplete) {
        return {};
    }
    constexpr double nearOne = 0.99;  // the complement of a larger upper tail loses digits
    const double upper = 0.5 * combine(even.tailSum, odd.tailSum, delta);
    return {upper < nearOne ? upper : -1.0, combine(even.slopeSum, odd.slopeSum, delta) / t};
}

}  // namespace vela::kernels
