#ifndef VELA_V1_CORRELATION_HPP
#define VELA_V1_CORRELATION_HPP

#include "vela/api.hpp"

/// Covariance and correlation of n pairs (x[i], y[i]).
///
/// x and y may be the same array, and null when n is 0. As for the moments, a missing or NaN
/// observation takes part in the arithmetic, and the running quantities are compensated.
namespace vela::v1 {

/// Sample covariance and both variances (divisor n - 1) in one pass.
///
/// @param varianceX  receives the variance of x; unwritten for n < 2
/// @param varianceY  receives the variance of y; unwritten for n < 2
/// @return the covariance; NaN for n < 2
/// @accuracy the variances are those of GetSampleMeanAndVariance() to rounding
/// @see Welford (1962), Note on a method for calculating corrected sums of squares and products,
///      Technometrics 4
VELA_API double GetCovariance(const double* x, const double* y, unsigned int n, double* varianceX,
                              double* varianceY);

/// Pearson's product-moment correlation.
///
/// @return r in [-1, 1]; NaN for n < 2, for a constant series, and where the product of the two
///         sums of squares leaves the range of doubles
/// @accuracy largest error measured 3e-16 (1 + |mean| / standard deviation), on 400 pairs of series
///           of 2 to 3000 values, means up to 10^6 times the spread
/// @see Pearson (1896), Regression, heredity and panmixia, Philosophical Transactions A 187
VELA_API double GetPearsonCorrelation(const double* x, const double* y, unsigned int n);

/// Spearman's rank correlation: Pearson's correlation of the ranks, ties averaged.
///
/// @param status  receives 0, or 30001 when a working array cannot be allocated; unwritten when the
///                ranking of GetRank() fails
/// @return r in [-1, 1]; NaN as for GetPearsonCorrelation(), and on failure
/// @accuracy that of GetPearsonCorrelation() of the ranks, which are exact
/// @see Spearman (1904), The proof and measurement of association between two things, American
///      Journal of Psychology 15
VELA_API double GetSpearmanCorrelation(const double* x, const double* y, unsigned int n,
                                       int* status);

}  // namespace vela::v1

#endif
