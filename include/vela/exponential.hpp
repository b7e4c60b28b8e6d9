#ifndef VELA_EXPONENTIAL_HPP
#define VELA_EXPONENTIAL_HPP

#include "vela/api.hpp"

#include <cstddef>

/// The exponential distribution: scale (> 0, unit of x; the mean is threshold + scale) and
/// threshold (finite, unit of x).
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does, and bracket the
/// floating-point state once; out and x may be the same array, and n = 0 touches neither.
/// Parameters are not checked. A floating-point fault leaves the call as an exception on a thread
/// registered with RegisterKroSigfpeHandler() and makes the result NaN on any other.
namespace vela {

/// Density of the exponential distribution, f(x) = exp(-(x - threshold) / scale) / scale from the
/// threshold on, 0 below it.
///
/// @param x          evaluation point; ::MissingValue is an ordinary number here
/// @param scale      > 0
/// @param threshold  finite
/// @return density >= 0; 0 where the computation overflows; NaN for a scale that is not positive
///         and for a NaN threshold; NaN as x is a fault
/// @accuracy 8e-14 relative over densities down to 1e-280
VELA_API double ExponentialPdf(double x, double scale, double threshold);
/// The same for n values.
VELA_API void ExponentialPdf(double* out, const double* x, std::size_t n, double scale,
                             double threshold);

/// Lower or upper tail of the exponential distribution, F(x) = 1 - exp(-(x - threshold) / scale)
/// above the threshold, 0 at and below it.
///
/// @param x          evaluation point; ::MissingValue is an ordinary number here
/// @param scale      > 0
/// @param threshold  finite
/// @param upper      true: P(X > x); false: P(X <= x)
/// @return probability in [0, 1]; NaN and a NaN threshold are faults
/// @throws std::runtime_error "float overflow" for a negative scale whose exponential overflows
/// @accuracy upper tail 8e-14 relative; lower tail 1e-13, and 1e-9 where it is below 0.001
///           (there it comes from the chi-square kernel, because 1 - exp(-t) would lose its
///           digits)
VELA_API double ExponentialCdf(double x, double scale, double threshold, bool upper);
/// The same for n values.
VELA_API void ExponentialCdf(double* out, const double* x, std::size_t n, double scale,
                             double threshold, bool upper);

/// Quantile of the exponential distribution, threshold - ln(1 - p) scale.
///
/// @param p          lower-tail probability in [0, 1); ::MissingValue is an ordinary number here
/// @param scale      > 0
/// @param threshold  finite
/// @return the quantile; NaN for p = 1
/// @throws std::invalid_argument "log of a negative argument" for p > 1 and for NaN
/// @accuracy that of ln(1 - p): relative error about 1e-16 / p for small p
/// @see Johnson, Kotz & Balakrishnan (1994), Continuous Univariate Distributions 1, ch. 19
VELA_API double ExponentialInvCdf(double p, double scale, double threshold);
/// The same for n values.
VELA_API void ExponentialInvCdf(double* out, const double* p, std::size_t n, double scale,
                                double threshold);

}  // namespace vela

#endif
