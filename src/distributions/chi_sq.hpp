#ifndef VELA_DISTRIBUTIONS_CHI_SQ_HPP
#define VELA_DISTRIBUTIONS_CHI_SQ_HPP

#include "vela/p_values.hpp"

namespace vela::distributions {

/// Quantile of the central chi-square distribution, or MissingValue.
double central_chi_sq_inv_cdf(double p, double df);

/// P-value of a statistic with the central chi-square distribution.
double chi_sq_p_value(double x, double df, EAlternative alternative);

}  // namespace vela::distributions

#endif
