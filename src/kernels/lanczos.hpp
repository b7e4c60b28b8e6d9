#ifndef VELA_KERNELS_LANCZOS_HPP
#define VELA_KERNELS_LANCZOS_HPP

/// ln Gamma by a Lanczos sum (g = 7, nine coefficients), for function objects and distribution
/// objects. The kernels use the Stirling family instead (kernels/stirling.hpp).
namespace vela::kernels {

/// ln Gamma(x); exactly 0 at 1 and 2.
/// @throws std::invalid_argument "gamma of a nonpositive argument" for x <= 0, "gamma of a value
///         too close to 0" where x + 7 == 7
double safe_lgamma(double x);

/// The same sum with a quiet NaN in place of the exceptions.
double lgamma_lanczos_nan(double x);

/// ln of the binomial coefficient C(n, k): 0 for n == 0 (whatever k is), else minus infinity for k
/// > n.
double log_binomial(unsigned n, unsigned k);

}  // namespace vela::kernels

#endif
