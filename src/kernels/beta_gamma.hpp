#ifndef VELA_KERNELS_BETA_GAMMA_HPP
#define VELA_KERNELS_BETA_GAMMA_HPP

/// Gamma functions at full double accuracy for the incomplete beta family. The log-gamma routines
/// of the other kernels are no substitute: a logarithm of magnitude 1e6 has lost six digits of the
/// function before it is exponentiated.
namespace vela::kernels {

/// Whether Gamma(1 + a) has been tabulated: whole and half numbers below 60.
inline bool is_tabulated_gamma(double a) {
    return a < 60.0 && 2.0 * a == static_cast<int>(2.0 * a);
}

/// Gamma(1 + a) for 0 < a < 30, relative error about 2e-15, and wherever it has been tabulated.
double gamma_plus_one(double a);

/// Gamma(a) / (sqrt(2 pi / a) (a / e)^a) as factor * exp(logPart); near 1 for large a.
struct ScaledGamma {
    double factor = 1.0;
    double logPart = 0.0;
};

/// For 1e-150 <= a <= 1e150.
ScaledGamma scaled_gamma(double a);

/// e^z z^-b Gamma(b, z), the upper incomplete gamma function without its exponential, for
/// 0 < b <= 1 and z > 0; relative error about 2e-15.
double scaled_upper_gamma(double b, double z);

}  // namespace vela::kernels

#endif
