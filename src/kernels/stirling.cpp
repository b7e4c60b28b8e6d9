#include "kernels/stirling.hpp"

#include "kernels/limits.hpp"

#include <cerrno>
#include <cmath>

namespace vela::kernels {
namespace {

constexpr double kE = 2.718281828459045;
constexpr double kTwoPi = 6.283185307179586;
constexpr double kLogTwoPi = 1.8378770664093453;
constexpr double kShiftTo = 10.0;  // the series is used at or above this argument

/// The Bernoulli-number series in 1/x.
double correction(double x) {
    const double w = 1.0 / (x * x);
    const double horner =
        (((((1.0 / 156.0 * w - 691.0 / 360360.0) * w + 1.0 / 1188.0) * w - 1.0 / 1680.0) * w +
          1.0 / 1260.0) *
             w -
         1.0 / 360.0) *
            w +
        1.0 / 12.0;
    return horner / x;
}

/// Gamma(original) = product * Gamma(argument), with argument >= 10.
struct Shifted {
    double argument;
    double product;
};

Shifted shift(double x) {
    double product = 1.0;
    while (x < kShiftTo) {
        product *= 1.0 / x;
        x += 1.0;
    }
    return {x, product};
}

/// ln Gamma(x) for an x that needs no shift, from the correction at x; its value decides about
/// overflow.
double log_gamma_unshifted(double x, double c) {
    const double logX = std::log(x);
    return (logX - 1.0) * x + 0.5 * (kLogTwoPi - logX) + c;
}

}  // namespace

double gamma_stirling(double x) {
    if (x <= 0.0) {
        errno = EDOM;
        return 0.0;
    }
    if (x < 2.220446049250313e-16) {
        return 1.0 / x;
    }
    const auto [argument, product] = shift(x);
    const double c = correction(argument);
    if (x > kShiftTo && log_gamma_unshifted(x, c) > kLogOverflow) {
        errno = ERANGE;
        return kLargestDouble;
    }
    return std::pow(argument / kE, argument) * std::sqrt(kTwoPi / argument) * std::exp(c) * product;
}

double lgamma_stirling(double x) {
    if (x <= 0.0) {
        errno = EDOM;
        return -kLargestDouble;
    }
    const auto [argument, product] = shift(x);
    return (argument - 0.5) * std::log(argument) + std::log(product) - argument + 0.5 * kLogTwoPi +
           correction(argument);
}

double stirling_remainder(double x) {
    errno = 0;
    if (x < 0.0) {
        errno = EDOM;
        return kLargestDouble;
    }
    if (x == 0.0) {
        return 0.0;
    }
    if (x <= 9.0) {
        return stirling_remainder(x, lgamma_stirling(x + 1.0));
    }
    return std::log(std::sqrt(kTwoPi * x)) + correction(x);
}

double stirling_remainder(double x, double logGamma1) {
    if (x <= 1e-5) {
        // pi^2 / 12 and 1 - Euler's constant: ln Gamma(x + 1) to second order.
        return x * 0.8224670334241132 * x + (0.42278433509846713 - std::log(x)) * x;
    }
    return logGamma1 - std::log(std::pow(x / kE, x));
}

}  // namespace vela::kernels
