#ifndef VELA_KERNELS_NONCENTRAL_F_HPP
#define VELA_KERNELS_NONCENTRAL_F_HPP

/// The noncentral F distribution: (X / df1) / (Y / df2) with X noncentral chi-square (see
/// kernels/noncentral_chi_square.hpp) and Y an independent central one. Degrees of freedom > 0 need
/// not be whole. A noncentrality of 0 or an infinite df1 takes exactly the central path
/// (kernels/f_central.hpp); with an infinite df2 it is the noncentral chi-square over df1.
/// Otherwise df1 from 1e-20 to 2e8, df2 from 1e-20 and a noncentrality up to 4e6 are served; beyond
/// them the level is 3. A negative or infinite noncentrality, degrees of freedom <= 0 and a NaN
/// anywhere are level 2.
namespace vela::kernels {

/// *lower = P(F <= x), *upper = P(F > x); 0 and 1 for x <= 0. On failure both are DBL_MAX. Routine
/// name "F_ncdf". Level 1: a tail below exp(-662.34472) was set to 0.
void F_ncdf(double x, double df1, double df2, double noncentrality, double* lower, double* upper);

/// The x with P(F <= x) = p for 0 <= p < 1; otherwise level 2. An x beyond the largest double is
/// level 3, and so is a positive p below exp(-662.34472) with a noncentrality. On failure *x is
/// -DBL_MAX. Routine name "inv_F_ncdf".
void inv_F_ncdf(double p, double df1, double df2, double noncentrality, double* x);

}  // namespace vela::kernels

#endif
