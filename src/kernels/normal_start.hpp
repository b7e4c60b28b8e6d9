#ifndef VELA_KERNELS_NORMAL_START_HPP
#define VELA_KERNELS_NORMAL_START_HPP

#include <cmath>

namespace vela::kernels {

/// The z with P(Z > z) = p for a standard normal Z and 0 < p <= 1/2, relative error 1e-7: a
/// rational function of sqrt(-2 ln p) fitted over the whole range of doubles. For the starts of
/// other quantiles.
inline double normal_start(double p) {
    const double r = std::sqrt(-2.0 * std::log(p));
    const double numerator =
        3.18710757 + r * (8.60703664 + r * (2.27496681 + r * (0.0861525921 + r * 9.49059911e-05)));
    const double denominator =
        1.0 + r * (5.31540203 + r * (4.19258073 + r * (0.620679258 + r * 0.0147876929)));
    return r - numerator / denominator;
}

}  // namespace vela::kernels

#endif
