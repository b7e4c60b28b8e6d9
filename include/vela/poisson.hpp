#ifndef VELA_POISSON_HPP
#define VELA_POISSON_HPP

#include "vela/api.hpp"

#include <cstddef>

/// The Poisson distribution: mean (finite, >= 0; the number of events is 0 for a mean of 0).
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does, and bracket the
/// floating-point state once; out and x may be the same array, and n = 0 touches neither.
namespace vela {

/// Probability of x events, mean^x exp(-mean) / x!; 0 where x is not a whole number.
///
/// @param x     evaluation point, whole within a relative 1e-12 or without mass
/// @param mean  finite, >= 0
/// @return probability in [0, 1]; NaN for invalid parameters and for NaN
/// @accuracy 2e-15 relative down to 1e-280, measured over means 1e-3 to 1e7
VELA_API double PoissonPdf(double x, double mean);
/// The same for n values.
VELA_API void PoissonPdf(double* out, const double* x, std::size_t n, double mean);

/// Lower or upper tail of the Poisson distribution at the largest whole number up to x. Each tail
/// is computed at its own precision.
///
/// @param x      evaluation point; ::MissingValue gives NaN
/// @param mean   finite, >= 0
/// @param upper  true: P(X > x); false: P(X <= x)
/// @return probability in [0, 1]; NaN for invalid parameters and for NaN
/// @accuracy 2e-14 relative in either tail for x and means up to 400; beyond, 1e-9 in the smaller
///           tail, that of the incomplete gamma function; NaN beyond x = 94906264 where no tail is
///           negligible
VELA_API double PoissonCdf(double x, double mean, bool upper);
/// The same for n values.
VELA_API void PoissonCdf(double* out, const double* x, std::size_t n, double mean, bool upper);

/// Quantile of the Poisson distribution: the smallest k with P(X <= k) >= p, where falling short by
/// no more than 1e-13 of the smaller tail counts as reached.
///
/// @param p     lower-tail probability in [0, 1]; ::MissingValue gives NaN
/// @param mean  finite, >= 0
/// @return the quantile; for p = 0 the smallest outcome, for p = 1 NaN unless mean = 0;
///         NaN for p outside [0, 1] and for invalid parameters, and where it exceeds 94906264
/// @accuracy exact at every step of the cumulative function
/// @see Johnson, Kotz & Kemp (1992), Univariate Discrete Distributions, ch. 4
VELA_API double PoissonInvCdf(double p, double mean);
/// The same for n values.
VELA_API void PoissonInvCdf(double* out, const double* p, std::size_t n, double mean);

}  // namespace vela

#endif
