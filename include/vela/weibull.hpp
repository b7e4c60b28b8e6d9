#ifndef VELA_WEIBULL_HPP
#define VELA_WEIBULL_HPP

#include "vela/api.hpp"

#include <cstddef>

/// The Weibull distribution: shape (> 0), scale (> 0, unit of x) and threshold (finite, unit of x).
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does, and bracket the
/// floating-point state once; out and x may be the same array, and n = 0 touches neither. Invalid
/// parameters give NaN.
namespace vela {

/// Density of the Weibull distribution, f(x) = shape / scale z^(shape - 1) exp(-z^shape) with z =
/// (x - threshold) / scale; 0 at and below the threshold.
///
/// @param x          evaluation point; ::MissingValue is an ordinary number here
/// @param shape      > 0
/// @param scale      > 0, unit of x
/// @param threshold  finite, unit of x
/// @return density >= 0; 0 where it exceeds the range of a double; NaN for invalid parameters and
///         NaN
/// @accuracy 1e-14 relative over shape 0.1 to 100, densities down to 1e-280
VELA_API double WeibullPdf(double x, double shape, double scale, double threshold);
/// The same for n values.
VELA_API void WeibullPdf(double* out, const double* x, std::size_t n, double shape, double scale,
                         double threshold);

/// Lower or upper tail of the Weibull distribution: the exponential one, see ExponentialCdf(), at
/// ((x - threshold) / scale)^shape; 0 and 1 below the threshold. Parameters are not checked,
/// except that a scale of 0 gives NaN.
///
/// @param x          evaluation point; ::MissingValue is an ordinary number here
/// @param shape      > 0
/// @param scale      > 0, unit of x
/// @param threshold  finite, unit of x
/// @param upper      true: P(X > x); false: P(X <= x)
/// @return probability in [0, 1]; the limit of the tail where the power overflows; NaN for NaN
/// @throws std::invalid_argument where the power is undefined: a negative scale with a shape that
///         is not whole, a negative shape at the threshold
/// @accuracy 1e-14 relative in both tails over shape 0.1 to 100; 1e-9 is all that is promised where
///           the lower tail is below 0.001, because it comes from the chi-square kernel
/// @see Johnson, Kotz & Balakrishnan (1994), Continuous Univariate Distributions 1, ch. 21
VELA_API double WeibullCdf(double x, double shape, double scale, double threshold, bool upper);
/// The same for n values.
VELA_API void WeibullCdf(double* out, const double* x, std::size_t n, double shape, double scale,
                         double threshold, bool upper);

/// Quantile of the Weibull distribution, threshold + scale (-ln(1 - p))^(1 / shape). Parameters are
/// not checked.
///
/// @param p          lower-tail probability in [0, 1); ::MissingValue is an ordinary number here
/// @param shape      > 0
/// @param scale      > 0, unit of x
/// @param threshold  finite, unit of x
/// @return the quantile: exactly the threshold for p = 0; NaN for p = 1 and where it overflows
/// @throws std::invalid_argument "log of a negative argument" for p > 1 and for NaN, and where the
///         power is undefined
/// @accuracy that of ln(1 - p): relative error about 1e-16 / (p shape) for small p
VELA_API double WeibullInvCdf(double p, double shape, double scale, double threshold);
/// The same for n values.
VELA_API void WeibullInvCdf(double* out, const double* p, std::size_t n, double shape, double scale,
                            double threshold);

}  // namespace vela

#endif
