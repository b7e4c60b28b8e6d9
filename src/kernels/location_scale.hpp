#ifndef VELA_KERNELS_LOCATION_SCALE_HPP
#define VELA_KERNELS_LOCATION_SCALE_HPP

#include <cmath>

/// Standardising and its inverse without a spurious overflow: with traps armed, an intermediate
/// that overflows would end a call whose answer is an ordinary number. NaN passes through quietly,
/// hence the quiet comparisons.
namespace vela::kernels {

/// standardize() for operands near the ends of the range of a double.
double standardize_extreme(double x, double location, double scale);

/// (x - location) / scale; infinite where that exceeds the range of a double. A zero scale faults
/// as the plain quotient does.
inline double standardize(double x, double location, double scale) {
    constexpr double large = 1e150;
    if (std::isless(std::fabs(x), large) && std::isless(std::fabs(location), large) &&
        std::isgreater(std::fabs(scale), 1.0 / large)) {
        return (x - location) / scale;
    }
    return standardize_extreme(x, location, scale);
}

/// z * scale + location, which may overflow in its product only where the sum does too.
inline double unstandardize(double z, double location, double scale) {
    constexpr double large = 1e300;
    if (std::isless(std::fabs(scale), large)) {
        return z * scale + location;
    }
    return (z * (scale * 0.5) + location * 0.5) * 2.0;
}

}  // namespace vela::kernels

#endif
