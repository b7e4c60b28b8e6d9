#ifndef VELA_LAPLACE_HPP
#define VELA_LAPLACE_HPP

#include "vela/api.hpp"

#include <cstddef>

/// The Laplace or double exponential distribution: location (finite, unit of x; the mean) and scale
/// (> 0, unit of x).
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does, and bracket the
/// floating-point state once; out and x may be the same array, and n = 0 touches neither. Invalid
/// parameters give NaN.
namespace vela {

/// Density of the Laplace distribution, f(x) = exp(-|z|) / (2 scale) with z = (x - location) /
/// scale.
///
/// @param x         evaluation point; ::MissingValue is an ordinary number here
/// @param location  finite, unit of x
/// @param scale     > 0, unit of x
/// @return density >= 0; 0 where it exceeds the range of a double; NaN for invalid parameters and
///         NaN
/// @accuracy 1e-15 relative, densities down to 1e-280
VELA_API double LaplacePdf(double x, double location, double scale);
/// The same for n values.
VELA_API void LaplacePdf(double* out, const double* x, std::size_t n, double location,
                         double scale);

/// Lower or upper tail of the Laplace distribution: exp(-|z|) / 2 on the far side of the location,
/// 1/2 + (1 - exp(-|z|)) / 2 on the near one, with z = (x - location) / scale.
///
/// @param x         evaluation point; ::MissingValue is an ordinary number here
/// @param location  finite, unit of x
/// @param scale     > 0, unit of x
/// @param upper     true: P(X > x); false: P(X <= x)
/// @return probability in [0, 1]; NaN for invalid parameters and NaN
/// @accuracy 1e-15 relative in both tails, measured down to 1e-280
/// @see Johnson, Kotz & Balakrishnan (1995), Continuous Univariate Distributions 2, ch. 24
VELA_API double LaplaceCdf(double x, double location, double scale, bool upper);
/// The same for n values.
VELA_API void LaplaceCdf(double* out, const double* x, std::size_t n, double location, double scale,
                         bool upper);

/// Quantile of the Laplace distribution: location + scale ln(2 p) for p <= 1/2, location - scale
/// ln(2 (1 - p)) above.
///
/// @param p         lower-tail probability in (0, 1); ::MissingValue gives NaN
/// @param location  finite, unit of x
/// @param scale     > 0, unit of x
/// @return the quantile; NaN for p outside (0, 1), for invalid parameters, and where it exceeds the
///         range of a double
/// @accuracy LaplaceCdf() of the result is p to 6e-14 relative in the smaller tail, measured down
///           to p = 1e-280
VELA_API double LaplaceInvCdf(double p, double location, double scale);
/// The same for n values.
VELA_API void LaplaceInvCdf(double* out, const double* p, std::size_t n, double location,
                            double scale);

}  // namespace vela

#endif
