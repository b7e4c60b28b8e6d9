#ifndef VELA_DISTRIBUTIONS_T_HPP
#define VELA_DISTRIBUTIONS_T_HPP

#include "vela/p_values.hpp"

namespace vela::distributions {

/// Quantile of Student's t, or MissingValue.
double t_inv_cdf(double p, double df, double noncentrality);

/// P-value of a statistic with the central t distribution.
double t_p_value(double t, double df, EAlternative alternative);

}  // namespace vela::distributions

#endif
