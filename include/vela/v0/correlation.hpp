#ifndef VELA_V0_CORRELATION_HPP
#define VELA_V0_CORRELATION_HPP

#include "vela/api.hpp"

namespace vela::v0 {

/// Two-sided P-value of a correlation under the hypothesis of none.
///
/// t = r sqrt((n - 2) / (1 - r^2)), referred to Student's t with n - 2 degrees of freedom. The host
/// application's convention is to use it for rank correlations as well, where it is approximate.
///
/// @param r  Pearson or Spearman correlation in [-1, 1]
/// @param n  number of pairs
/// @return probability in [0, 1], exactly 1 for r = 0 and 0 for |r| = 1; NaN for n <= 2 and for r
///         outside [-1, 1]. Nothing is thrown, whatever floating-point state the caller left.
/// @accuracy that of TCdf() at t, which inherits the cancellation in 1 - r^2 as |r| nears 1
/// @see Student (1908), Probable error of a correlation coefficient, Biometrika 6
VELA_API double GetKroCorrelationPValue(double r, unsigned int n);

}  // namespace vela::v0

#endif
