#ifndef VELA_DISTRIBUTIONS_LOG_SCALE_HPP
#define VELA_DISTRIBUTIONS_LOG_SCALE_HPP

#include "conventions/fp_environment.hpp"
#include "kernels/guarded.hpp"

#include <cmath>

/// Families of X whose ln(X - threshold) has a known distribution.
namespace vela::distributions {

/// ln(x - threshold) for x > threshold, also where the difference exceeds the range of a double;
/// NaN for NaN, without a fault.
inline double log_above(double x, double threshold) {
    constexpr double large = 4e307;
    constexpr double ln2 = 0.6931471805599453;
    if (std::isless(std::fabs(x), large) && std::isless(std::fabs(threshold), large)) {
        return std::log(x - threshold);
    }
    return std::log(0.5 * x - 0.5 * threshold) + ln2;
}

/// threshold + exp(logarithm); MissingValue where that overflows and for a NaN logarithm.
inline double above_threshold(double logarithm, double threshold) {
    if (logarithm != logarithm) {
        return MissingValue;
    }
    return conventions::value_unless_overflow(
        MissingValue, [=] { return threshold + kernels::safe_exp(logarithm); });
}

}  // namespace vela::distributions

#endif
