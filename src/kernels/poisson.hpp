#ifndef VELA_KERNELS_POISSON_HPP
#define VELA_KERNELS_POISSON_HPP

/// The Poisson distribution with a finite mean >= 0; any other mean is level 2. Failed outputs are
/// DBL_MAX, and -DBL_MAX for a quantile.
namespace vela::kernels {

/// *lower = P(X <= k), *upper = P(X > k) for a whole k of any size or sign. 5e-14 relative for k up
/// to 400 and a mean up to 570; beyond, through gamma_pq(), 1e-9 relative in the smaller tail, and
/// level 2 where k exceeds 94906264 and a tail is not negligible. Routine name "poisson_df".
void poisson_df(double k, double mean, double* lower, double* upper);

/// P(X = k) for a whole k, by the saddle-point form. Routine name "poisson_pdf".
double poisson_pdf(double k, double mean);

/// The smallest *k with P(X <= *k) >= probability; see discrete_quantile.hpp. Routine name
/// "poisson_lower_quant".
void poisson_lower_quant(double probability, double mean, double* k);

}  // namespace vela::kernels

#endif
