#ifndef VELA_CAUCHY_HPP
#define VELA_CAUCHY_HPP

#include "vela/api.hpp"

#include <cstddef>

/// The Cauchy distribution: location (finite, unit of x; the median) and scale (> 0, unit of x;
/// half the distance of the quartiles).
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does, and bracket the
/// floating-point state once; out and x may be the same array, and n = 0 touches neither. Invalid
/// parameters give NaN.
namespace vela {

/// Density of the Cauchy distribution, f(x) = 1 / (pi scale (1 + z^2)) with z = (x - location) /
/// scale.
///
/// @param x         evaluation point; ::MissingValue is an ordinary number here
/// @param location  finite, unit of x
/// @param scale     > 0, unit of x
/// @return density >= 0; 0 where it exceeds the range of a double; NaN for invalid parameters and
///         NaN
/// @accuracy 1e-15 relative, densities down to 1e-280
VELA_API double CauchyPdf(double x, double location, double scale);
/// The same for n values.
VELA_API void CauchyPdf(double* out, const double* x, std::size_t n, double location, double scale);

/// Lower or upper tail of the Cauchy distribution, atan(z) / pi + 1/2 with z = (x - location) /
/// scale, negated for the upper tail. Small tails cancel: their error is absolute.
///
/// @param x         evaluation point; ::MissingValue is an ordinary number here
/// @param location  finite, unit of x
/// @param scale     > 0, unit of x
/// @param upper     true: P(X > x); false: P(X <= x)
/// @return probability in [0, 1]; NaN for invalid parameters and NaN
/// @accuracy 1e-16 absolute
/// @see Johnson, Kotz & Balakrishnan (1994), Continuous Univariate Distributions 1, ch. 16
VELA_API double CauchyCdf(double x, double location, double scale, bool upper);
/// The same for n values.
VELA_API void CauchyCdf(double* out, const double* x, std::size_t n, double location, double scale,
                        bool upper);

/// Quantile of the Cauchy distribution, location + scale tan(pi (p - 1/2)).
///
/// @param p         lower-tail probability in (0, 1); ::MissingValue gives NaN
/// @param location  finite, unit of x
/// @param scale     > 0, unit of x
/// @return the quantile; NaN for p outside (0, 1), for invalid parameters, and where it exceeds the
///         range of a double
/// @accuracy CauchyCdf() of the result, were it not for its cancellation, is p to 3e-16 relative in
///           the smaller tail, measured down to p = 1e-280
VELA_API double CauchyInvCdf(double p, double location, double scale);
/// The same for n values.
VELA_API void CauchyInvCdf(double* out, const double* p, std::size_t n, double location,
                           double scale);

}  // namespace vela

#endif
