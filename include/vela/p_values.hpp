#ifndef VELA_P_VALUES_HPP
#define VELA_P_VALUES_HPP

#include "vela/api.hpp"

#include <cstdint>

namespace vela {

/// The alternative of a test, for P-values and critical values. Any other value is accepted: its
/// P-value is 0, and its critical value the quantile at probability 0.
enum class EAlternative : std::int32_t { LowerTailed = -1, TwoSided = 0, UpperTailed = 1 };

/// P-value of a standard normal statistic: the lower tail, the upper tail, or twice the smaller
/// one.
///
/// @param z            statistic; ::MissingValue gives NaN
/// @param alternative  which tail
/// @return probability in [0, 1]; exactly 0.5 (one-sided) or 1 (two-sided) at z = 0
/// @throws std::invalid_argument for a NaN statistic on a thread registered with
///         RegisterKroSigfpeHandler(); elsewhere the result is NaN
/// @accuracy see NormalCdf()
VELA_API double NormalPValue(double z, EAlternative alternative);

/// P-value of a statistic with Student's t distribution.
///
/// @param t            statistic; ::MissingValue gives NaN
/// @param df           degrees of freedom > 0, need not be whole; infinite: standard normal
/// @param alternative  which tail
/// @return probability in [0, 1]; NaN for invalid degrees of freedom
/// @accuracy see TCdf()
VELA_API double TPValue(double t, double df, EAlternative alternative);

}  // namespace vela

#endif
