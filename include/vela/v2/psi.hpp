#ifndef VELA_V2_PSI_HPP
#define VELA_V2_PSI_HPP

#include "vela/api.hpp"

namespace vela::v2 {

/// The digamma function psi(x) = d/dx ln Gamma(x).
///
/// Shifts x to 10 or above by psi(x) = psi(x + 1) - 1/x and sums the asymptotic series there; below
/// 1e-12 it is -1/x.
///
/// @param x  > 0
/// @return psi(x); NaN for x <= 0 and for NaN
/// @accuracy largest error measured 9e-13, relative where |psi(x)| > 1 and absolute elsewhere
///           (20,000 points from 1e-11 to 1e12)
/// @see Bernardo (1976), Algorithm AS 103: Psi (digamma) function, Applied Statistics 25
VELA_API double Psi(double x);

}  // namespace vela::v2

#endif
