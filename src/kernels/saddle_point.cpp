// Poisson and binomial masses at full double accuracy. The deviance of the count, in two doubles,
// is the only large number in the exponent; what it leaves is the remainder of Stirling's formula.
// Small counts (below 12, where the remainder is not small) take powers and gamma functions as they
// stand.

#include "kernels/saddle_point.hpp"

#include "kernels/beta_gamma.hpp"
#include "kernels/beta_log.hpp"
#include "kernels/beta_power.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vela::kernels {
namespace {

constexpr double kTwoPi = 6.283185307179586;
constexpr double kSmallCount = 12.0;
constexpr double kSmallestShape = 1e-150;
constexpr double kLargestShape = 1e150;

double small_count_mass(double x, double mean) {
    constexpr double vanishing = 1400.0;  // mean^12 exp(-mean) is 0 beyond
    if (mean > vanishing) {
        return 0.0;
    }
    const double half = std::exp(-0.5 * mean);  // exp(-mean) may underflow before the product does
    return half * (std::pow(mean, x) / gamma_plus_one(x)) * half;
}

/// q^n for q = 1 - p.
double pure_power(double n, double p, double q) {
    const DoubleDouble logarithm =
        p <= 0.5 ? log1p_two_doubles({-p, 0.0}) : log_two_doubles({q, 0.0});
    return n > 1e300 ? 0.0 : exp_minus(-(logarithm * n));
}

}  // namespace

double stirling_error(double n) {
    if (n > kLargestShape) {
        return 0.0;
    }
    const ScaledGamma scaled = scaled_gamma(std::max(n, kSmallestShape));
    return (n < 1.0 ? std::log(scaled.factor) : 0.0) + scaled.logPart;
}

double poisson_mass(double x, double mean) {
    if (mean == 0.0) {
        return x == 0.0 ? 1.0 : 0.0;
    }
    if (x < kSmallCount) {
        return small_count_mass(x, mean);
    }
    if (x > kLargestShape || mean > kLargestShape || mean < 1e-30) {
        return x == mean ? 1.0 / (std::sqrt(kTwoPi) * std::sqrt(x)) : 0.0;
    }
    const DoubleDouble exponent = deviance(x, two_sum(mean, -x), {mean, 0.0});
    return exp_minus(exponent + DoubleDouble{scaled_gamma(x).logPart, 0.0}) / std::sqrt(kTwoPi * x);
}

double binomial_mass(double x, double n, double p, double q) {
    if (p == 0.0 || q == 0.0) {
        return x == (p == 0.0 ? 0.0 : n) ? 1.0 : 0.0;
    }
    const double y = n - x;
    if (x < kSmallestShape) {
        return pure_power(n, p, q);
    }
    if (y < kSmallestShape) {
        return pure_power(n, q, p);
    }
    if (n > kLargestShape) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    return BetaPower(x, y).at(BetaPoint::from_doubles(p, q)) / std::min(x, y) *
           (n / std::max(x, y));
}

}  // namespace vela::kernels
