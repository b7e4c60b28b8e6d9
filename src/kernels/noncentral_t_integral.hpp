#ifndef VELA_KERNELS_NONCENTRAL_T_INTEGRAL_HPP
#define VELA_KERNELS_NONCENTRAL_T_INTEGRAL_HPP

/// Noncentral t as integrals over the scale S = sqrt(chi2 / df): the numerical part, without
/// argument checks. Everywhere 0 <= t < infinity, 1e-20 <= df < infinity, |delta| <= 2^26.5.
namespace vela::kernels {

struct TailPair {
    double lower = 0.0;  // P(T <= t)
    double upper = 0.0;  // P(T > t)
};

/// One tail is integrated, the other is its complement; neither loses more than three digits.
TailPair noncentral_t_tails(double t, double df, double delta);

/// Density of T at t.
double noncentral_t_density(double t, double df, double delta);

/// P(Z > y) for a standard normal Z and finite y, to full precision (kernels/normal.hpp stops at
/// 1e-9 by design).
double normal_upper_tail(double y);

/// The density of a standard normal Z at finite y.
double normal_density(double y);

}  // namespace vela::kernels

#endif
