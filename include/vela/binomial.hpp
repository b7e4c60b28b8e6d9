#ifndef VELA_BINOMIAL_HPP
#define VELA_BINOMIAL_HPP

#include "vela/api.hpp"

#include <cstddef>

/// The binomial distribution of the number of events in independent trials: number of trials (>= 0)
/// and event probability (in [0, 1]).
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does, and bracket the
/// floating-point state once; out and x may be the same array, and n = 0 touches neither.
namespace vela {

/// Probability of x events, C(n, x) p^x (1 - p)^(n - x); 0 where x is not a whole number.
///
/// @param x            evaluation point, whole within a relative 1e-12 or without mass
/// @param trials       number of trials >= 0
/// @param probability  event probability in [0, 1]
/// @return probability in [0, 1]; NaN for invalid parameters and for NaN
/// @accuracy 7e-15 relative down to 1e-280, measured over n = 1 to 1e7
VELA_API double BinomialPdf(double x, int trials, double probability);
/// The same for n values.
VELA_API void BinomialPdf(double* out, const double* x, std::size_t n, int trials,
                          double probability);

/// Lower or upper tail of the binomial distribution at the largest whole number up to x. Each tail
/// is computed at its own precision.
///
/// @param x            evaluation point; ::MissingValue gives NaN
/// @param trials       number of trials >= 0, whole within a relative 1e-12
/// @param probability  event probability in [0, 1]
/// @param upper        true: P(X > x); false: P(X <= x)
/// @return probability in [0, 1]; NaN for invalid parameters and for NaN
/// @accuracy 5e-14 relative in either tail down to 1e-280, measured over n = 1 to 1e7
VELA_API double BinomialCdf(double x, double trials, double probability, bool upper);
/// The same for n values.
VELA_API void BinomialCdf(double* out, const double* x, std::size_t n, double trials,
                          double probability, bool upper);

/// Quantile of the binomial distribution: the smallest k with P(X <= k) >= p, where falling short
/// by no more than 1e-13 of the smaller tail counts as reached.
///
/// @param p            lower-tail probability in [0, 1]; ::MissingValue gives NaN
/// @param trials       number of trials >= 0
/// @param probability  event probability in [0, 1]
/// @return the quantile; for p = 0 the smallest outcome, for p = 1 the largest (of positive
///         probability); NaN for p outside [0, 1] and for invalid parameters
/// @accuracy exact at every step of the cumulative function
/// @see Johnson, Kotz & Kemp (1992), Univariate Discrete Distributions, ch. 3
VELA_API double BinomialInvCdf(double p, int trials, double probability);
/// The same for n values.
VELA_API void BinomialInvCdf(double* out, const double* p, std::size_t n, int trials,
                             double probability);

}  // namespace vela

#endif
