#ifndef VELA_GEOMETRIC_HPP
#define VELA_GEOMETRIC_HPP

#include "vela/api.hpp"

#include <cstddef>

/// The geometric distribution of the number of non-events before the first event, counted from 0:
/// event probability (0 < p <= 1).
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does, and bracket the
/// floating-point state once; out and x may be the same array, and n = 0 touches neither.
namespace vela {

/// Probability of x non-events before the first event, p (1 - p)^x; 0 where x is not a whole
/// number.
///
/// @param x            evaluation point, whole within a relative 1e-12 or without mass
/// @param probability  event probability, 0 < probability <= 1
/// @return probability in [0, 1]; NaN for invalid parameters and for NaN
/// @accuracy 4e-16 relative down to 1e-280
VELA_API double GeometricPdf(double x, double probability);
/// The same for n values.
VELA_API void GeometricPdf(double* out, const double* x, std::size_t n, double probability);

/// Lower or upper tail of the geometric distribution at the largest whole number up to x. P(X > k)
/// = (1 - p)^(k + 1); each tail is computed at its own precision.
///
/// @param x            evaluation point; ::MissingValue gives NaN
/// @param probability  event probability, 0 < probability <= 1
/// @param upper        true: P(X > x); false: P(X <= x)
/// @return probability in [0, 1]; NaN for invalid parameters and for NaN
/// @accuracy 7e-16 relative in either tail down to 1e-280
VELA_API double GeometricCdf(double x, double probability, bool upper);
/// The same for n values.
VELA_API void GeometricCdf(double* out, const double* x, std::size_t n, double probability,
                           bool upper);

/// Quantile of the geometric distribution: the smallest k with P(X <= k) >= p, where falling short
/// by no more than 1e-13 of the smaller tail counts as reached.
///
/// @param p            lower-tail probability in [0, 1]; ::MissingValue gives NaN
/// @param probability  event probability, 0 < probability <= 1
/// @return the quantile; for p = 0 the smallest outcome, for p = 1 NaN;
///         NaN for p outside [0, 1] and for invalid parameters, and where it exceeds 1e300
/// @accuracy exact at every step of the cumulative function
/// @see Johnson, Kotz & Kemp (1992), Univariate Discrete Distributions, ch. 5
VELA_API double GeometricInvCdf(double p, double probability);
/// The same for n values.
VELA_API void GeometricInvCdf(double* out, const double* p, std::size_t n, double probability);

}  // namespace vela

#endif
