#ifndef VELA_KERNELS_NONCENTRAL_T_MIXTURE_HPP
#define VELA_KERNELS_NONCENTRAL_T_MIXTURE_HPP

/// Noncentral t as a mixture of beta probabilities: the fast way where it is accurate.
namespace vela::kernels {

/// A member is negative where the sum would be long or would lose digits.
struct MixtureResult {
    double upper = -1.0;    // P(T > t), where the lower tail can be had from it
    double density = -1.0;  // at t
};

/// For finite t > 0, df > 0 and any finite delta.
MixtureResult noncentral_t_mixture(double t, double df, double delta);

}  // namespace vela::kernels

#endif
