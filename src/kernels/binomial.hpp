#ifndef VELA_KERNELS_BINOMIAL_HPP
#define VELA_KERNELS_BINOMIAL_HPP

/// The binomial distribution of the number of events in n trials with event probability p.
///
/// n is a whole number >= 0, p lies in [0, 1]; anything else is level 2. Failed outputs are
/// DBL_MAX, and -DBL_MAX for a quantile.
namespace vela::kernels {

/// *lower = P(X <= k), *upper = P(X > k) for a whole k of any size or sign, to 5e-14 relative
/// for small counts, else through beta_df() with its accuracy and other levels. Routine name
/// "binomial_df".
void binomial_df(double k, double n, double p, double* lower, double* upper);

/// P(X = k) for a whole k, by the saddle-point form. Routine name "binomial_pdf".
double binomial_pdf(double k, double n, double p);

/// The smallest *k with P(X <= *k) >= probability; see discrete_quantile.hpp. Routine name
/// "binomial_lower_quant".
void binomial_lower_quant(double probability, double n, double p, double* k);

}  // namespace vela::kernels

#endif
