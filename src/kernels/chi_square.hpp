#ifndef VELA_KERNELS_CHI_SQUARE_HPP
#define VELA_KERNELS_CHI_SQUARE_HPP

namespace vela::kernels {

/// *lower = P(X <= x), *upper = P(X > x) for the central chi-square distribution with df degrees of
/// freedom, x > 0, by the incomplete gamma function (routine name and levels are those of
/// gamma_pq()). On failure both are DBL_MAX.
void chi2_df(double x, double df, double* lower, double* upper);

}  // namespace vela::kernels

#endif
