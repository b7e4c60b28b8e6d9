#ifndef VELA_HYPERGEOMETRIC_HPP
#define VELA_HYPERGEOMETRIC_HPP

#include "vela/api.hpp"

#include <cstddef>

/// The hypergeometric distribution of the number of events in a sample drawn without replacement:
/// size of the population, number of events in it, size of the sample.
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does, and bracket the
/// floating-point state once; out and x may be the same array, and n = 0 touches neither.
namespace vela {

/// Probability of x events in the sample, C(M, x) C(N - M, n - x) / C(N, n); 0 where x is not a
/// whole number.
///
/// @param x           evaluation point, whole within a relative 1e-12 or without mass
/// @param population  size of the population
/// @param events      number of events in the population, 0 to population
/// @param sample      size of the sample, 0 to population
/// @return probability in [0, 1]; NaN for invalid parameters and for NaN
/// @accuracy 1.5e-15 relative down to 1e-280, measured over populations to 2e9
VELA_API double HypergeometricPdf(double x, int population, int events, int sample);
/// The same for n values.
VELA_API void HypergeometricPdf(double* out, const double* x, std::size_t n, int population,
                                int events, int sample);

/// Lower or upper tail of the hypergeometric distribution at the largest whole number up to x. Each
/// tail is computed at its own precision.
///
/// @param x           evaluation point; ::MissingValue gives NaN
/// @param population  size of the population
/// @param events      number of events in the population, 0 to population
/// @param sample      size of the sample, 0 to population
/// @param upper       true: P(X > x); false: P(X <= x)
/// @return probability in [0, 1]; NaN for invalid parameters and for NaN
/// @accuracy 5e-15 relative in either tail down to 1e-280, measured over populations to 2e9
VELA_API double HypergeometricCdf(double x, int population, int events, int sample, bool upper);
/// The same for n values.
VELA_API void HypergeometricCdf(double* out, const double* x, std::size_t n, int population,
                                int events, int sample, bool upper);

/// Quantile of the hypergeometric distribution: the smallest k with P(X <= k) >= p, where falling
/// short by no more than 1e-13 of the smaller tail counts as reached.
///
/// @param p           lower-tail probability in [0, 1]; ::MissingValue gives NaN
/// @param population  size of the population
/// @param events      number of events in the population, 0 to population
/// @param sample      size of the sample, 0 to population
/// @return the quantile; for p = 0 the smallest outcome, for p = 1 the largest;
///         NaN for p outside [0, 1] and for invalid parameters
/// @accuracy exact at every step of the cumulative function
/// @see Johnson, Kotz & Kemp (1992), Univariate Discrete Distributions, ch. 6
VELA_API double HypergeometricInvCdf(double p, int population, int events, int sample);
/// The same for n values.
VELA_API void HypergeometricInvCdf(double* out, const double* p, std::size_t n, int population,
                                   int events, int sample);

}  // namespace vela

#endif
