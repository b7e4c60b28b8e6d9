#ifndef VELA_KERNELS_SADDLE_POINT_HPP
#define VELA_KERNELS_SADDLE_POINT_HPP

/// Mass functions without differences of log-gamma values, which lose digits as the counts grow:
/// Stirling's formula with its exact remainder, and the deviance of a count from its mean (Loader
/// 2000, Fast and accurate computation of binomial probabilities). The arguments need not be whole,
/// so that the same two functions serve the gamma, beta and F densities.
namespace vela::kernels {

/// ln Gamma(n + 1) - ((n + 1/2) ln n - n + ln sqrt(2 pi)) for n > 0.
double stirling_error(double n);

/// mean^x e^-mean / Gamma(x + 1) for x >= 0, mean >= 0: the Poisson mass at a whole x.
double poisson_mass(double x, double mean);

/// Gamma(n + 1) / (Gamma(x + 1) Gamma(n - x + 1)) p^x q^(n - x) for 0 <= x <= n, with q = 1 - p
/// given at full relative precision: the binomial mass at a whole x and n.
double binomial_mass(double x, double n, double p, double q);

}  // namespace vela::kernels

#endif
