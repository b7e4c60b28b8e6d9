#ifndef VELA_INTEGER_UNIFORM_HPP
#define VELA_INTEGER_UNIFORM_HPP

#include "vela/api.hpp"

#include <cstddef>

/// The uniform distribution on whole numbers: smallest and largest outcome, both included.
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does, and bracket the
/// floating-point state once; out and x may be the same array, and n = 0 touches neither.
namespace vela {

/// Probability of x: the same for each outcome; 0 where x is not a whole number or outside.
///
/// @param x         evaluation point, whole within a relative 1e-12 or without mass
/// @param smallest  smallest outcome
/// @param largest   largest outcome, >= smallest
/// @return probability in [0, 1]; NaN for invalid parameters and for NaN
/// @accuracy one rounding
VELA_API double IntegerUniformPdf(double x, int smallest, int largest);
/// The same for n values.
VELA_API void IntegerUniformPdf(double* out, const double* x, std::size_t n, int smallest,
                                int largest);

/// Lower or upper tail of the integer uniform distribution at the largest whole number up to x.
/// Each tail is computed at its own precision.
///
/// @param x         evaluation point; ::MissingValue gives NaN
/// @param smallest  smallest outcome
/// @param largest   largest outcome, >= smallest
/// @param upper     true: P(X > x); false: P(X <= x)
/// @return probability in [0, 1]; NaN for invalid parameters and for NaN
/// @accuracy one rounding
/// @see Johnson, Kotz & Kemp (1992), Univariate Discrete Distributions, ch. 6
VELA_API double IntegerUniformCdf(double x, int smallest, int largest, bool upper);
/// The same for n values.
VELA_API void IntegerUniformCdf(double* out, const double* x, std::size_t n, int smallest,
                                int largest, bool upper);

/// Quantile of the integer uniform distribution: the smallest k with
/// P(X <= k) >= p, where falling short by no more than 1e-13 p counts as reached.
///
/// @param p         lower-tail probability in [0, 1]; ::MissingValue gives NaN
/// @param smallest  smallest outcome
/// @param largest   largest outcome, >= smallest
/// @return the quantile; for p = 0 the smallest outcome, for p = 1 the largest;
///         NaN for p outside [0, 1] and for invalid parameters
/// @accuracy exact in the sense of the rule above
VELA_API double IntegerUniformInvCdf(double p, int smallest, int largest);
/// The same for n values.
VELA_API void IntegerUniformInvCdf(double* out, const double* p, std::size_t n, int smallest,
                                   int largest);

}  // namespace vela

#endif
