#ifndef VELA_KERNELS_STIRLING_HPP
#define VELA_KERNELS_STIRLING_HPP

/// The gamma function by Stirling's series with seven Bernoulli terms, after a shift of the
/// argument to 10 or above. Domain errors set errno to EDOM, range errors to ERANGE; nothing
/// throws.
namespace vela::kernels {

/// Gamma(x); 1/x below the machine epsilon; 0 for x <= 0 (EDOM); DBL_MAX on overflow (ERANGE).
double gamma_stirling(double x);

/// ln Gamma(x); -DBL_MAX for x <= 0 (EDOM).
double lgamma_stirling(double x);

/// ln Gamma(x + 1) - x ln x + x; DBL_MAX for x < 0 (EDOM). Clears errno otherwise.
double stirling_remainder(double x);

/// The same for 0 < x <= 9 where ln Gamma(x + 1) is known.
double stirling_remainder(double x, double logGamma1);

}  // namespace vela::kernels

#endif
