#ifndef VELA_GAMMA_HPP
#define VELA_GAMMA_HPP

#include "vela/api.hpp"

#include <cstddef>

/// The gamma distribution with a threshold: shape (> 0, at most 9.4e7 for tails and quantiles),
/// scale (> 0, unit of x) and threshold (finite, unit of x).
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does, and bracket the
/// floating-point state once; out and x may be the same array, and n = 0 touches neither. Invalid
/// parameters give NaN.
namespace vela {

/// Density of the gamma distribution, f(x) = z^(shape - 1) exp(-z) / (Gamma(shape) scale) with z =
/// (x - threshold) / scale; 0 at and below the threshold.
///
/// @param x          evaluation point; ::MissingValue is an ordinary number here
/// @param shape      > 0
/// @param scale      > 0, unit of x
/// @param threshold  finite, unit of x
/// @return density >= 0; 0 where it exceeds the range of a double; NaN for invalid parameters and
///         NaN
/// @accuracy 1e-15 relative over shape 1e-3 to 1e6, densities down to 1e-280
/// @see Loader (2000), Fast and accurate computation of binomial probabilities
VELA_API double GammaPdf(double x, double shape, double scale, double threshold);
/// The same for n values.
VELA_API void GammaPdf(double* out, const double* x, std::size_t n, double shape, double scale,
                       double threshold);

/// Lower or upper tail of the gamma distribution, by the incomplete gamma function; 0 and 1 at and
/// below the threshold.
///
/// @param x          evaluation point; ::MissingValue gives NaN
/// @param shape      > 0
/// @param scale      > 0, unit of x
/// @param threshold  finite, unit of x
/// @param upper      true: P(X > x); false: P(X <= x)
/// @return probability in [0, 1]; NaN for invalid parameters and NaN
/// @accuracy 6e-10 relative in the smaller tail over shape 1e-3 to 3000, by design; a tail below
///           2.3e-288 is 0
/// @see Didonato & Morris (1986), Computation of the incomplete gamma function ratios and their
///      inverse, ACM TOMS 12
VELA_API double GammaCdf(double x, double shape, double scale, double threshold, bool upper);
/// The same for n values.
VELA_API void GammaCdf(double* out, const double* x, std::size_t n, double shape, double scale,
                       double threshold, bool upper);

/// Quantile of the gamma distribution: the x with P(X <= x) = p.
///
/// @param p          lower-tail probability in [0, 1); ::MissingValue gives NaN
/// @param shape      > 0
/// @param scale      > 0, unit of x
/// @param threshold  finite, unit of x
/// @return the quantile; NaN for p outside [0, 1), for invalid parameters, and where it exceeds the
///         range of a double; the threshold for p = 0 and where the standardised quantile is below
///         the smallest double. NaN also for a p below 2.3e-288 whose quantile is not next to the
///         threshold, because GammaCdf() does not resolve it
/// @accuracy GammaCdf() of the result is p to 1e-12 relative in the smaller tail, and to 3e-10
///           where the regions of GammaCdf() meet; measured over shape 1e-3 to 5e7 down to p =
///           1e-280. From shape 1000 on, far tails excepted, the standardised quantile itself is
///           right to 5e-13 relative, and GammaCdf() of it p to its own 1e-9
/// @see Temme (1992), Asymptotic inversion of incomplete gamma functions, Math. Comp. 58
VELA_API double GammaInvCdf(double p, double shape, double scale, double threshold);
/// The same for n values.
VELA_API void GammaInvCdf(double* out, const double* p, std::size_t n, double shape, double scale,
                          double threshold);

}  // namespace vela

#endif
