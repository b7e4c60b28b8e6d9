#ifndef VELA_KERNELS_BETA_MILLS_HPP
#define VELA_KERNELS_BETA_MILLS_HPP

namespace vela::kernels {

/// Mills' ratio of the standard normal distribution, P(Z > z) / phi(z), for 0 <= z <= 45, within
/// two units of the last place. The tails of the large-shape expansions are a multiple of it.
double mills_ratio(double z);

}  // namespace vela::kernels

#endif
