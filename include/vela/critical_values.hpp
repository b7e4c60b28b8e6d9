#ifndef VELA_CRITICAL_VALUES_HPP
#define VELA_CRITICAL_VALUES_HPP

#include "vela/api.hpp"
#include "vela/p_values.hpp"

namespace vela {

/// Critical values of the symmetric distributions are upper-tail values: the quantile at lower-tail
/// probability 1 - alpha for either one-sided alternative (the caller negates it for the lower one)
/// and at 1 - alpha / 2 for the two-sided one.

/// Critical value of a standard normal statistic.
///
/// @param alpha        significance level in (0, 1)
/// @param alternative  -1 and 1 give the same value, 0 the two-sided one
/// @return the critical value; NaN when there is none
/// @accuracy see NormalInvCdf()
VELA_API double NormalCritValue(double alpha, EAlternative alternative);

/// Critical value of a t statistic with Bonferroni's correction: the level used is alpha / k.
///
/// @param alpha        family significance level in (0, 1)
/// @param df           degrees of freedom > 0; infinite: standard normal
/// @param alternative  -1 and 1 give the same value, 0 the two-sided one
/// @param k            number of comparisons >= 1; 1 is the ordinary critical value
/// @return the critical value; NaN when there is none
/// @throws std::runtime_error for k = 0 on a thread registered with RegisterKroSigfpeHandler();
///         elsewhere the result is NaN
/// @accuracy see TInvCdf()
VELA_API double TCritValue(double alpha, double df, EAlternative alternative, int k);

/// Critical value of a t statistic with Sidak's correction: the level used is
/// 1 - (1 - alpha)^(1/k).
///
/// @param alpha        family significance level in (0, 1)
/// @param df           degrees of freedom > 0; infinite: standard normal
/// @param alternative  -1 and 1 give the same value, 0 the two-sided one
/// @param k            number of comparisons >= 1
/// @return the critical value; NaN when there is none
/// @throws std::invalid_argument for alpha > 1 unless k is 1 or -1; for k = 0 as TCritValue()
/// @accuracy see TInvCdf()
/// @see Sidak (1967), Rectangular confidence regions for the means of multivariate normal
///      distributions, JASA 62
VELA_API double TSidakCritValue(double alpha, double df, EAlternative alternative, int k);

/// Critical values of chi-square and F are one-sided: the quantile at alpha for the lower
/// alternative, at 1 - alpha for the upper one, and 0 for any other, the two-sided one included.

/// Critical value of a chi-square statistic.
///
/// @param alpha        significance level in (0, 1)
/// @param df           degrees of freedom > 0
/// @param alternative  -1: the lower quantile; 1: the upper one; any other value: the result is 0
/// @return the critical value; NaN when there is none
/// @accuracy see ChiSqInvCdf()
VELA_API double ChiSqCritValue(double alpha, double df, EAlternative alternative);

/// Critical value of an F statistic.
///
/// @param alpha        significance level in (0, 1)
/// @param df1          degrees of freedom of the numerator > 0
/// @param df2          degrees of freedom of the denominator > 0
/// @param alternative  -1: the lower quantile; 1: the upper one; any other value: the result is 0
/// @return the critical value; NaN when there is none
/// @accuracy see FInvCdf()
VELA_API double FCritValue(double alpha, double df1, double df2, EAlternative alternative);

}  // namespace vela

#endif
