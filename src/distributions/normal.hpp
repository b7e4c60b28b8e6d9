#ifndef VELA_DISTRIBUTIONS_NORMAL_HPP
#define VELA_DISTRIBUTIONS_NORMAL_HPP

#include "distributions/tails.hpp"
#include "kernels/normal.hpp"

namespace vela::distributions {

using kernels::normal_inv_cdf;

double normal_pdf(double x, double mean, double sd);
double normal_cdf(double x, double mean, double sd, bool upper);

/// P-value of a standard normal statistic.
double normal_p_value(double z, EAlternative alternative);

}  // namespace vela::distributions

#endif
