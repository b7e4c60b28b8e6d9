#ifndef VELA_SMALLEST_EXTREME_VALUE_HPP
#define VELA_SMALLEST_EXTREME_VALUE_HPP

#include "vela/api.hpp"

#include <cstddef>

/// The smallest extreme value distribution: location (finite, unit of x; the mode) and scale (> 0,
/// unit of x). It is that of the logarithm of a Weibull variable.
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does, and bracket the
/// floating-point state once; out and x may be the same array, and n = 0 touches neither. Invalid
/// parameters give NaN.
namespace vela {

/// Density of the smallest extreme value distribution, f(x) = exp(z - exp(z)) / scale with z = (x -
/// location) / scale.
///
/// @param x         evaluation point; ::MissingValue is an ordinary number here
/// @param location  finite, unit of x
/// @param scale     > 0, unit of x
/// @return density >= 0; 0 where it exceeds the range of a double; NaN for invalid parameters and
///         NaN
/// @accuracy 1e-13 relative, densities down to 1e-280
VELA_API double SmallestExtremeValuePdf(double x, double location, double scale);
/// The same for n values.
VELA_API void SmallestExtremeValuePdf(double* out, const double* x, std::size_t n, double location,
                                      double scale);

/// Lower or upper tail of the smallest extreme value distribution, F(x) = 1 - exp(-exp(z)) with z =
/// (x - location) / scale: the exponential distribution at exp(z), see ExponentialCdf().
///
/// @param x         evaluation point; ::MissingValue is an ordinary number here
/// @param location  finite, unit of x
/// @param scale     > 0, unit of x
/// @param upper     true: P(X > x); false: P(X <= x)
/// @return probability in [0, 1]; NaN for invalid parameters and NaN
/// @accuracy 5e-14 relative in both tails, measured down to 1e-280
/// @see Johnson, Kotz & Balakrishnan (1995), Continuous Univariate Distributions 2, ch. 22
VELA_API double SmallestExtremeValueCdf(double x, double location, double scale, bool upper);
/// The same for n values.
VELA_API void SmallestExtremeValueCdf(double* out, const double* x, std::size_t n, double location,
                                      double scale, bool upper);

/// Quantile of the smallest extreme value distribution, location + scale ln(-ln(1 - p)).
///
/// @param p         lower-tail probability in (0, 1); ::MissingValue gives NaN
/// @param location  finite, unit of x
/// @param scale     > 0, unit of x
/// @return the quantile; NaN for p outside (0, 1), for invalid parameters, and where it exceeds the
///         range of a double
/// @accuracy SmallestExtremeValueCdf() of the result is p to 6e-14 relative in the smaller tail,
///           measured down to p = 1e-280
VELA_API double SmallestExtremeValueInvCdf(double p, double location, double scale);
/// The same for n values.
VELA_API void SmallestExtremeValueInvCdf(double* out, const double* p, std::size_t n,
                                         double location, double scale);

}  // namespace vela

#endif
