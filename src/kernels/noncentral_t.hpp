#ifndef VELA_KERNELS_NONCENTRAL_T_HPP
#define VELA_KERNELS_NONCENTRAL_T_HPP

/// Student's t with a noncentrality: T = (Z + delta) / S with Z standard normal and df * S^2
/// chi-square with df degrees of freedom, 0 < df <= infinity. A delta of 0 takes exactly the
/// central path (kernels/student_t.hpp), an infinite df the normal kernel with its 1e-9. For other
/// delta, |delta| above 94906265 (2^26.5) and df below 1e-20 are level 3. An infinite delta, a NaN
/// anywhere and df <= 0 are level 2.
namespace vela::kernels {

/// *lower = P(T <= t), *upper = P(T > t); t may be infinite. Both are good to 3e-12 relative for df
/// from 1e-3 to 1e8 and |delta| up to 1e4, down to 1e-280, and obey P(T_delta <= t) == P(T_-delta >
/// -t) exactly. On failure both are DBL_MAX.
void t_ncdf(double t, double df, double delta, double* lower, double* upper);

/// The density at t, with the same accuracy; MissingValue where the arguments are invalid or delta
/// is too large.
double t_npdf(double t, double df, double delta);

/// The t with P(T <= t) = p for 0 < p < 1, good to 1e-12 of the smaller tail; otherwise level 2. A
/// t beyond the largest double is level 3. On failure *t is -DBL_MAX.
void inv_t_ncdf(double p, double df, double delta, double* t);

}  // namespace vela::kernels

#endif
