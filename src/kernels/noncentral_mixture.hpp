#ifndef VELA_KERNELS_NONCENTRAL_MIXTURE_HPP
#define VELA_KERNELS_NONCENTRAL_MIXTURE_HPP

#include "kernels/beta.hpp"
#include "kernels/positive_quantile.hpp"

/// Poisson mixtures of beta probabilities, sum_j e^-mean mean^j / j! I_x(a + j, b): the noncentral
/// F distribution, and with b = kEndless the noncentral chi-square.
namespace vela::kernels {

/// A second shape at which I_(y/b)(a, b) is the incomplete gamma function P(a, y) to more than
/// double precision for a, y up to 1e12.
inline constexpr double kEndless = 1e45;

/// The x at which I_x(a, kEndless) is P(a, y), for 1e-100 <= y <= 1e100.
BetaPoint gamma_point(double y);

/// Both tails of the mixture and the slope of either, d tail / d ln(x / (1 - x)).
struct MixtureTails {
    double lower = 0.0;
    double upper = 0.0;
    double slope = 0.0;
    bool isReliable = true;  // false: a start value did not converge

    TailAndSlope pick(bool isUpper) const { return {isUpper ? upper : lower, slope}; }
};

/// Each tail to its own relative precision. 1e-21 <= a <= 1e8, 1e-21 <= b <= kEndless,
/// 1e-300 <= mean <= 2e6.
MixtureTails mixture_tails(const BetaPoint& point, double a, double b, double mean);

}  // namespace vela::kernels

#endif
