#ifndef VELA_TRIANGULAR_HPP
#define VELA_TRIANGULAR_HPP

#include "vela/api.hpp"

#include <cstddef>

/// The triangular distribution on [minimum, maximum] with its peak at mode: minimum <= mode <=
/// maximum, all finite and in the unit of x.
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does, and bracket the
/// floating-point state once; out and x may be the same array, and n = 0 touches neither. Invalid
/// parameters give NaN.
namespace vela {

/// Density of the triangular distribution, which rises from 0 at the minimum to 2 / (maximum -
/// minimum) at the mode and falls to 0 at the maximum.
///
/// @param x        evaluation point; ::MissingValue is an ordinary number here
/// @param minimum  finite
/// @param mode     >= minimum
/// @param maximum  >= mode
/// @return density >= 0; 0 where it exceeds the range of a double; NaN for invalid parameters and
///         NaN
/// @accuracy 1e-15 relative
VELA_API double TriangularPdf(double x, double minimum, double mode, double maximum);
/// The same for n values.
VELA_API void TriangularPdf(double* out, const double* x, std::size_t n, double minimum,
                            double mode, double maximum);

/// Lower or upper tail of the triangular distribution. The upper tail is the lower one of the
/// mirrored problem, and the lower one above the mode is built up from the mode, so that a small
/// tail there has the absolute error of 1.
///
/// @param x        evaluation point; ::MissingValue is an ordinary number here
/// @param minimum  finite
/// @param mode     >= minimum
/// @param maximum  >= mode
/// @param upper    true: P(X > x); false: P(X <= x)
/// @return probability in [0, 1]; NaN for invalid parameters and NaN
/// @accuracy 1e-15 relative below the mode, 1e-15 absolute above it (lower tail; the upper tail the
///           other way round)
/// @see Johnson, Kotz & Balakrishnan (1995), Continuous Univariate Distributions 2, ch. 26
VELA_API double TriangularCdf(double x, double minimum, double mode, double maximum, bool upper);
/// The same for n values.
VELA_API void TriangularCdf(double* out, const double* x, std::size_t n, double minimum,
                            double mode, double maximum, bool upper);

/// Quantile of the triangular distribution.
///
/// @param p        lower-tail probability in [0, 1]; ::MissingValue gives NaN
/// @param minimum  finite
/// @param mode     >= minimum
/// @param maximum  >= mode
/// @return the quantile; NaN for p outside [0, 1] and for invalid parameters
/// @accuracy 3e-15 of the largest of the three parameters
VELA_API double TriangularInvCdf(double p, double minimum, double mode, double maximum);
/// The same for n values.
VELA_API void TriangularInvCdf(double* out, const double* p, std::size_t n, double minimum,
                               double mode, double maximum);

}  // namespace vela

#endif
