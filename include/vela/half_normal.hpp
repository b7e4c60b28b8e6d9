#ifndef VELA_HALF_NORMAL_HPP
#define VELA_HALF_NORMAL_HPP

#include "vela/api.hpp"

#include <cstddef>

/// The half-normal distribution, that of threshold + |Y| for a normal Y with mean 0 and standard
/// deviation scale: scale (> 0, unit of x) and threshold (finite, unit of x).
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does, and bracket the
/// floating-point state once; out and x may be the same array, and n = 0 touches neither. Invalid
/// parameters give NaN.
namespace vela {

/// Density of the half-normal distribution, f(x) = sqrt(2 / pi) exp(-z^2 / 2) / scale with z = (x -
/// threshold) / scale; 0 below the threshold.
///
/// @param x          evaluation point; ::MissingValue is an ordinary number here
/// @param scale      > 0, unit of x
/// @param threshold  finite, unit of x
/// @return density >= 0; 0 where it exceeds the range of a double; NaN for invalid parameters and
///         NaN
/// @accuracy 2e-15 relative, densities down to 1e-15
VELA_API double HalfNormalPdf(double x, double scale, double threshold);
/// The same for n values.
VELA_API void HalfNormalPdf(double* out, const double* x, std::size_t n, double scale,
                            double threshold);

/// Lower or upper tail of the half-normal distribution: 2 c - 1 and 1 - (2 c - 1), where c is the
/// lower normal tail at z = (x - threshold) / scale; 0 and 1 below the threshold.
///
/// @param x          evaluation point; ::MissingValue takes the place of c, so that the result is
///                   2.46912e30 or 1 - 2.46912e30
/// @param scale      > 0, unit of x
/// @param threshold  finite, unit of x
/// @param upper      true: P(X > x); false: P(X <= x)
/// @return probability in [0, 1]; NaN for NaN and, other than below and at the threshold and for
///         ::MissingValue, for invalid parameters
/// @accuracy 3e-10 absolute; by its definition a small tail cancels, so that an upper tail of 4e-15
///           is good to 3 per cent
/// @see Johnson, Kotz & Balakrishnan (1994), Continuous Univariate Distributions 1, ch. 13
VELA_API double HalfNormalCdf(double x, double scale, double threshold, bool upper);
/// The same for n values.
VELA_API void HalfNormalCdf(double* out, const double* x, std::size_t n, double scale,
                            double threshold, bool upper);

/// Quantile of the half-normal distribution: threshold + scale times the normal quantile of upper
/// tail (1 - p) / 2.
///
/// @param p          lower-tail probability in [0, 1); ::MissingValue gives NaN
/// @param scale      > 0, unit of x
/// @param threshold  finite, unit of x
/// @return the quantile; NaN for p outside [0, 1), for invalid parameters, and where it exceeds the
///         range of a double
/// @accuracy 1.1e-9 relative in (x - threshold) / scale, by design
VELA_API double HalfNormalInvCdf(double p, double scale, double threshold);
/// The same for n values.
VELA_API void HalfNormalInvCdf(double* out, const double* p, std::size_t n, double scale,
                               double threshold);

}  // namespace vela

#endif
