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

    /// Adds a term and moves on by the ratios of the weights and of the steps.
    void add(double weightRatio, double stepRatio) {
        tailSum += weight * tail;
        slopeSum += weight * a * step;
        weight *= weightRatio;
        tail += step;
        step *= stepRatio;
        a += 1.0;
    }

    /// Whether the next terms are too small to matter.
    bool is_complete() const {
        constexpr double tolerance = 1e-17;
        return weight * tail <= tolerance * tailSum && weight * a * step <= tolerance * slopeSum;
    }
};

/// Adds terms to both halves. The divisors of the weights of one are those of the steps of the
/// other. Returns whether the sums are complete.
bool add_terms(Half& even, Half& odd, double lambda, double x, double b) {
    constexpr int maxTerms = 400;
    double reciprocal = 1.0;
    for (int j = 0; j < maxTerms; ++j) {
        const double halfWay = 1.0 / (j + 1.5);
        const double next = 1.0 / (j + 2.0);
        even.add(lambda * reciprocal, x * (even.a + b) * halfWay);
        odd.add(lambda * halfWay, x * (odd.a + b) * next);
        reciprocal = next;
        // beyond lambda the terms fall ever faster
        if (j > lambda && even.is_complete() && odd.is_complete()) {
            return true;
        }
    }
    return false;
}

constexpr double kMaxDelta = 12.0;
constexpr double kLeastDifference = 6e-4;  // of the halves, relative to one

/// Where the sum is short and its ingredients neither overflow nor come near the denormals.
bool is_suited(double t, double df, double delta) {
    return std::fabs(delta) <= kMaxDelta && df >= 0.5 && df <= 1e7 && t > 1e-3 && t < 1e40;
}

/// The halves together, or -1 if that cancels too much.
double combine(double even, double odd, double delta) {
    if (delta > 0.0) {
        return even + odd;
    }
    const double difference = even - odd;
    return difference > kLeastDifference * even ? difference : -1.0;
}

}  // namespace

MixtureResult noncentral_t_mixture(double t, double df, double delta) {
    if (!is_suited(t, df, delta)) {
        return {};
    }
    constexpr double smallestLog = -570.0;  // of (1 - x)^b; below it terms might underflow
    const double b = 0.5 * df;
    const double ratio = t * t / df;
    if (-b * std::log1p(ratio) < smallestLog) {
        return {};
    }
    const double x = ratio / (1.0 + ratio);
    constexpr double tooMuchCancels = 4.0;
    if (-delta * t > tooMuchCancels * std::sqrt(1.0 + ratio)) {
        return {};
    }
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
    if (!add_terms(even, odd, lambda, x, b)) {
        return {};
    }
    constexpr double nearOne = 0.99;  // the complement of a larger upper tail loses digits
    const double upper = 0.5 * combine(even.tailSum, odd.tailSum, delta);
    return {upper < nearOne ? upper : -1.0, combine(even.slopeSum, odd.slopeSum, delta) / t};
}

}  // namespace vela::kernels
