#ifndef VELA_KERNELS_NONCENTRAL_CHI_SQUARE_HPP
#define VELA_KERNELS_NONCENTRAL_CHI_SQUARE_HPP

#include "kernels/noncentral_mixture.hpp"

/// The noncentral chi-square distribution: the sum of df squared normal variables of unit variance
/// whose squared means add up to the noncentrality; df > 0 need not be whole. A noncentrality of 0
/// takes exactly the central path (kernels/chi_square.hpp). Otherwise df from 1e-20 to 2e8 and a
/// noncentrality up to 4e6 are served; beyond them the level is 3. A negative or infinite
/// noncentrality, df <= 0 and a NaN anywhere are level 2.
namespace vela::kernels {

/// *lower = P(X <= x), *upper = P(X > x); 0 and 1 for x <= 0. On failure both are DBL_MAX. Routine
/// name "chi2_ncdf". Level 1: a tail below exp(-662.34472) was set to 0.
void chi2_ncdf(double x, double df, double noncentrality, double* lower, double* upper);

/// The x with P(X <= x) = p for 0 <= p < 1; otherwise level 2. An x beyond the largest double is
/// level 3, and so is a positive p below exp(-662.34472) with a noncentrality. On failure *x is
/// -DBL_MAX. Routine name "inv_chi2_ncdf".
void inv_chi2_ncdf(double p, double df, double noncentrality, double* x);

/// The tails for y = x / 2 > 0, a = df / 2 and mean = noncentrality / 2, without checks and
/// reports.
MixtureTails noncentral_gamma_tails(double y, double a, double mean);

}  // namespace vela::kernels

#endif
