#ifndef VELA_V1_MOMENTS_HPP
#define VELA_V1_MOMENTS_HPP

#include "vela/api.hpp"

namespace vela::v1 {

/// Sample mean and variance (divisor n - 1) in one compensated pass.
///
/// A missing or NaN observation propagates through the arithmetic.
///
/// @param x         n observations; may be null for n = 0
/// @param n         number of observations
/// @param mean      receives the mean; NaN for n = 0
/// @param variance  receives the variance; NaN for n = 0, 0 for n = 1
/// @see Welford (1962), Note on a method for calculating corrected sums of squares and products,
///      Technometrics 4; Kahan (1965), Further remarks on reducing truncation errors, CACM 8
VELA_API void GetSampleMeanAndVariance(const double* x, unsigned int n, double* mean,
                                       double* variance);

}  // namespace vela::v1

#endif
