#ifndef VELA_KERNELS_GAMMA_NEWTON_HPP
#define VELA_KERNELS_GAMMA_NEWTON_HPP

#include "kernels/incomplete_gamma.hpp"

namespace vela::kernels {

enum class GammaTail : char { kLower = 'L', kUpper = 'U' };

/// Solves P(a, x) = target (lower) or Q(a, x) = target (upper) for x by Newton's method, refining
/// the starting value in *x in place. Level 4 and routine name "gamma_newton" when it does not
/// converge within 35 evaluations or the density vanishes; the caller's name stays otherwise.
///
/// Not a quantile routine by itself: from a poor start it fails. The normal quantile starts close
/// enough always; whoever else uses it brackets it and falls back.
void gamma_newton(double target, const GammaShape& shape, double* x, GammaTail tail);
void gamma_newton(double target, double a, double* x, char tail);

}  // namespace vela::kernels

#endif
