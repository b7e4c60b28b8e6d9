#ifndef VELA_NEG_BINOMIAL_HPP
#define VELA_NEG_BINOMIAL_HPP

#include "vela/api.hpp"

#include <cstddef>

/// The negative binomial distribution of the number of non-events before a given number of events,
/// counted from 0: event probability (0 < p <= 1) and number of events (> 0, need not be whole).
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does, and bracket the
/// floating-point state once; out and x may be the same array, and n = 0 touches neither.
namespace vela {

/// Probability of x non-events before the r-th event, Gamma(r + x) / (Gamma(r) x!) p^r (1 - p)^x; 0
/// where x is not a whole number.
///
/// @param x            evaluation point, whole within a relative 1e-12 or without mass
/// @param probability  event probability, 0 < probability <= 1
/// @param events       number of events, 0 < events < 1e149, need not be whole
/// @return probability in [0, 1]; NaN for invalid parameters and for NaN
/// @accuracy 6e-15 relative down to 1e-280, measured over 1e-3 to 1e6 events
VELA_API double NegBinomialPdf(double x, double probability, double events);
/// The same for n values.
VELA_API void NegBinomialPdf(double* out, const double* x, std::size_t n, double probability,
                             double events);

/// Lower or upper tail of the negative binomial distribution at the largest whole number up to x.
/// Each tail is computed at its own precision.
///
/// @param x            evaluation point; ::MissingValue gives NaN
/// @param probability  event probability, 0 < probability <= 1
/// @param events       number of events, 0 < events < 1e149, need not be whole
/// @param upper        true: P(X > x); false: P(X <= x)
/// @return probability in [0, 1]; NaN for invalid parameters and for NaN
/// @accuracy 3e-14 relative in either tail down to 1e-280, measured over 1e-3 to 1e6 events; NaN
///           for fewer than 1e-150 events or where x exceeds 1e149 and no tail is negligible
VELA_API double NegBinomialCdf(double x, double probability, double events, bool upper);
/// The same for n values.
VELA_API void NegBinomialCdf(double* out, const double* x, std::size_t n, double probability,
                             double events, bool upper);

/// Quantile of the negative binomial distribution: the smallest k with P(X <= k) >= p, where
/// falling short by no more than 1e-13 of the smaller tail counts as reached.
///
/// @param p            lower-tail probability in [0, 1]; ::MissingValue gives NaN
/// @param probability  event probability, 0 < probability <= 1
/// @param events       number of events, 0 < events < 1e149, need not be whole
/// @return the quantile; for p = 0 the smallest outcome, for p = 1 NaN;
///         NaN for p outside [0, 1] and for invalid parameters, and where it exceeds 1e149
/// @accuracy exact at every step of the cumulative function
/// @see Johnson, Kotz & Kemp (1992), Univariate Discrete Distributions, ch. 5
VELA_API double NegBinomialInvCdf(double p, double probability, double events);
/// The same for n values.
VELA_API void NegBinomialInvCdf(double* out, const double* p, std::size_t n, double probability,
                                double events);

}  // namespace vela

#endif
