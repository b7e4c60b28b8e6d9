#ifndef VELA_DISTRIBUTIONS_LOGISTIC_HPP
#define VELA_DISTRIBUTIONS_LOGISTIC_HPP

namespace vela::distributions {

/// Density of the standard logistic distribution at z, times exp(-extraExponent) / scale.
double logistic_density(double z, double extraExponent, double scale);

double logistic_cdf(double x, double location, double scale, bool upper);
double logistic_inv_cdf(double p, double location, double scale);

}  // namespace vela::distributions

#endif
