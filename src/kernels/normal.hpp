#ifndef VELA_KERNELS_NORMAL_HPP
#define VELA_KERNELS_NORMAL_HPP

/// The standard normal distribution through the incomplete gamma function of shape 1/2, so that
/// probability and quantile agree to the precision of that kernel: 1e-9 relative in the smaller
/// tail.
namespace vela::kernels {

/// erfc(t) in [0, 2]; exactly 0, 1 or 2 beyond fixed cut-offs.
double kernel_erfc(double t);

/// *lower = P(Z <= x), *upper = P(Z > x). Where the incomplete gamma function fails, and for NaN
/// (which also raises the invalid-operation fault), both are DBL_MAX.
void normal_df(double x, double* lower, double* upper);

/// The z >= 0 with P(Z > z) = p for 1e-100 <= p <= 0.5; otherwise level 2 and -DBL_MAX.
void normal_upper_quant(double p, double* z);

/// The z with P(Z <= z) = p for 1e-100 <= p <= 1 - 1e-100; otherwise level 2 and -DBL_MAX, p = 1
/// included.
void inv_normal_df(double p, double* z);

/// mean + sd * z with P(Z <= z) = p. Below 1e-100 a root search takes over, down to the smallest
/// tail that normal_df() resolves. MissingValue when there is no such z or it cannot be found.
double normal_inv_cdf(double p, double mean, double sd);

}  // namespace vela::kernels

#endif
