#ifndef VELA_LOG_NORMAL_HPP
#define VELA_LOG_NORMAL_HPP

#include "vela/api.hpp"

#include <cstddef>

/// The lognormal distribution with a threshold: the logarithm of X - threshold is normal with mean
/// location (finite) and standard deviation scale (> 0); threshold (finite) has the unit of x.
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does, and bracket the
/// floating-point state once; out and x may be the same array, and n = 0 touches neither. Invalid
/// parameters give NaN.
namespace vela {

/// Density of the lognormal distribution, f(x) = exp(-z^2 / 2) / (sqrt(2 pi) scale (x - threshold))
/// with z = (ln(x - threshold) - location) / scale; 0 at and below the threshold.
///
/// @param x          evaluation point; ::MissingValue is an ordinary number here
/// @param location   finite, that of the logarithm
/// @param scale      > 0, that of the logarithm
/// @param threshold  finite, unit of x
/// @return density >= 0; 0 where it exceeds the range of a double; NaN for invalid parameters and
///         NaN
/// @accuracy 2e-13 relative over scale 0.1 to 3, densities down to 1e-280
VELA_API double LogNormalPdf(double x, double location, double scale, double threshold);
/// The same for n values.
VELA_API void LogNormalPdf(double* out, const double* x, std::size_t n, double location,
                           double scale, double threshold);

/// Lower or upper tail of the lognormal distribution: the normal one of ln(x - threshold), see
/// NormalCdf(); 0 and 1 at and below the threshold.
///
/// @param x          evaluation point; ::MissingValue is an ordinary number here
/// @param location   finite, that of the logarithm
/// @param scale      > 0, that of the logarithm
/// @param threshold  finite, unit of x
/// @param upper      true: P(X > x); false: P(X <= x)
/// @return probability in [0, 1]; NaN for invalid parameters and NaN
/// @accuracy 6e-10 relative in the smaller tail, as NormalCdf()
/// @see Johnson, Kotz & Balakrishnan (1994), Continuous Univariate Distributions 1, ch. 14
VELA_API double LogNormalCdf(double x, double location, double scale, double threshold, bool upper);
/// The same for n values.
VELA_API void LogNormalCdf(double* out, const double* x, std::size_t n, double location,
                           double scale, double threshold, bool upper);

/// Quantile of the lognormal distribution: threshold + exp of the normal quantile.
///
/// @param p          lower-tail probability in [0, 1); ::MissingValue gives NaN
/// @param location   finite, that of the logarithm
/// @param scale      > 0, that of the logarithm
/// @param threshold  finite, unit of x
/// @return the quantile; NaN for p outside [0, 1), for invalid parameters, and where it exceeds the
///         range of a double, and for a positive p below 4.2e-284, as NormalInvCdf(); the threshold
///         for p = 0
/// @accuracy that of NormalInvCdf(): the relative error is up to 1.1e-9 |z| scale, where z is the
///           standard normal quantile
VELA_API double LogNormalInvCdf(double p, double location, double scale, double threshold);
/// The same for n values.
VELA_API void LogNormalInvCdf(double* out, const double* p, std::size_t n, double location,
                              double scale, double threshold);

}  // namespace vela

#endif
