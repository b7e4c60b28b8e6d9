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

/// P-value of a statistic with the central chi-square distribution.
///
/// @param x            statistic; up to 0 the lower tail is 0 and the upper one 1 whatever the
///                     degrees of freedom; ::MissingValue gives NaN
/// @param df           degrees of freedom > 0, need not be whole
/// @param alternative  which tail
/// @return probability in [0, 1]; NaN for invalid degrees of freedom and x > 0
/// @accuracy see ChiSqCdf()
VELA_API double ChiSqPValue(double x, double df, EAlternative alternative);

/// P-value of a statistic with the central F distribution.
///
/// @param f            statistic; up to 0 the lower tail is 0 and the upper one 1; ::MissingValue
///                     gives NaN
/// @param df1          degrees of freedom of the numerator > 0, need not be whole
/// @param df2          degrees of freedom of the denominator > 0, need not be whole
/// @param alternative  which tail
/// @return probability in [0, 1]; NaN for invalid degrees of freedom
/// @accuracy see FCdf()
VELA_API double FPValue(double f, double df1, double df2, EAlternative alternative);

/// P-value of a number of events in independent trials: P(X <= x), P(X >= x), or, two-sided, the
/// total probability of all outcomes that are not more probable than x (more by less than a part in
/// 1e7 counts as equal), which is 1 at a mode. With p = 0.5 the two-sided value is twice the
/// smaller tail, at most 1, and 1 where x is n / 2 rounded down.
///
/// @param x            number of events, truncated to a whole number; ::MissingValue gives NaN
/// @param n            number of trials >= 0
/// @param p            event probability in [0, 1]
/// @param alternative  which tail
/// @return probability in [0, 1]; two-sided 0 outside 0..n; NaN for invalid parameters and NaN
/// @accuracy see BinomialCdf()
VELA_API double BinomialPValue(double x, int n, double p, EAlternative alternative);

/// P-value of a number of events in a sample drawn without replacement, as Fisher's exact test asks
/// for: P(X <= x), P(X >= x), or, two-sided, the total probability of all outcomes that are not
/// more probable than x (more by less than a part in 1e7 counts as equal), which is 1 at a mode.
///
/// @param x            number of events in the sample
/// @param population   size of the population
/// @param events       number of events in the population, 0 to population
/// @param sample       size of the sample, 0 to population
/// @param alternative  which tail
/// @return probability in [0, 1]; two-sided 0 outside the support; NaN for invalid parameters
/// @accuracy see HypergeometricCdf()
VELA_API double HypergeometricPValue(int x, int population, int events, int sample,
                                     EAlternative alternative);

}  // namespace vela

#endif
