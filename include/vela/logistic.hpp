#ifndef VELA_LOGISTIC_HPP
#define VELA_LOGISTIC_HPP

#include "vela/api.hpp"

#include <cstddef>

/// The logistic distribution: location (finite, unit of x; the mean) and scale (> 0, unit of x).
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does, and bracket the
/// floating-point state once; out and x may be the same array, and n = 0 touches neither. Invalid
/// parameters give NaN.
namespace vela {

/// Density of the logistic distribution, f(x) = exp(-|z|) / (scale (1 + exp(-|z|))^2) with z = (x -
/// location) / scale.
///
/// @param x         evaluation point; ::MissingValue is an ordinary number here
/// @param location  finite, unit of x
/// @param scale     > 0, unit of x
/// @return density >= 0; 0 where it exceeds the range of a double; NaN for invalid parameters and
///         NaN
/// @accuracy 1e-15 relative, densities down to 1e-280
VELA_API double LogisticPdf(double x, double location, double scale);
/// The same for n values.
VELA_API void LogisticPdf(double* out, const double* x, std::size_t n, double location,
                          double scale);

/// Lower or upper tail of the logistic distribution: 1 / (1 + e) and e / (1 + e) with e = exp(-(x -
/// location) / scale).
///
/// @param x         evaluation point; ::MissingValue is an ordinary number here
/// @param location  finite, unit of x
/// @param scale     > 0, unit of x
/// @param upper     true: P(X > x); false: P(X <= x)
/// @return probability in [0, 1]; NaN for invalid parameters and NaN
/// @accuracy 1e-15 relative in both tails, measured down to 1e-280
/// @see Johnson, Kotz & Balakrishnan (1995), Continuous Univariate Distributions 2, ch. 23
VELA_API double LogisticCdf(double x, double location, double scale, bool upper);
/// The same for n values.
VELA_API void LogisticCdf(double* out, const double* x, std::size_t n, double location,
                          double scale, bool upper);

/// Quantile of the logistic distribution, location + scale (ln p - ln(1 - p)).
///
/// @param p         lower-tail probability in (0, 1); ::MissingValue is an ordinary number here
/// @param location  finite, unit of x
/// @param scale     > 0, unit of x
/// @return the quantile, exactly the location for p within a relative 1e-12 of 1/2; NaN for p = 0
///         and p = 1. Parameters are not checked
/// @throws std::invalid_argument "log of a negative argument" for p outside [0, 1] and NaN
/// @accuracy LogisticCdf() of the result is p to 6e-14 relative in the smaller tail, measured down
///           to p = 1e-280; about 1e-12 scale next to p = 1/2
VELA_API double LogisticInvCdf(double p, double location, double scale);
/// The same for n values.
VELA_API void LogisticInvCdf(double* out, const double* p, std::size_t n, double location,
                             double scale);

}  // namespace vela

#endif
