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

/// The same to a few ulps, for p >= 2.3e-288: one step of Halley's method.
inline double polished_normal_start(double p) {
    constexpr double rootTwoPi = 2.5066282746310005;
    const double z = normal_start(p);
    const double excess = 0.5 * std::erfc(z / std::sqrt(2.0)) - p;
    const double newton = excess * rootTwoPi * std::exp(0.5 * z * z);
    return z + newton / (1.0 - 0.5 * z * newton);
}

}  // namespace vela::kernels

#endif
