#ifndef VELA_DISTRIBUTIONS_F_HPP
#define VELA_DISTRIBUTIONS_F_HPP

#include "vela/p_values.hpp"

namespace vela::distributions {

/// Quantile of the F distribution, or MissingValue.
double f_inv_cdf(double p, double df1, double df2, double noncentrality);

/// P-value of a statistic with the central F distribution.
double f_p_value(double f, double df1, double df2, EAlternative alternative);

}  // namespace vela::distributions

#endif
