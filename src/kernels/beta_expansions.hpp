#ifndef VELA_KERNELS_BETA_EXPANSIONS_HPP
#define VELA_KERNELS_BETA_EXPANSIONS_HPP

/// The two expansions of the incomplete beta function for large shapes.
namespace vela::kernels {

/// Both shapes large, x at or below the mean: *sum such that
/// I_x(a, b) = exp(-deviance) / sqrt(2 pi) Gs(a + b) / (Gs(a) Gs(b)) *sum, where Gs is the gamma
/// function over Stirling's formula and deviance = a ln(p / x) + b ln(q / y), p = 1 - q = a / (a +
/// b). False where the terms do not become small; for a b / (a + b) >= 100 and deviance <= 12 they
/// do.
bool large_shapes_expansion(double a, double b, double deviance, double* sum);

/// One shape large, the other small: I_x(a, b) B(a, b) / (x^a y^b) for a >= 15, 0 < b <= 1 and
/// y = 1 - x <= 0.3.
double gamma_expansion(double a, double b, double y);

}  // namespace vela::kernels

#endif
