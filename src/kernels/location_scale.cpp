#include "kernels/location_scale.hpp"

#include "kernels/limits.hpp"

#include <limits>

namespace vela::kernels {

double standardize_extreme(double x, double location, double scale) {
    if (!std::isfinite(x) || !std::isfinite(location) || !std::isfinite(scale) || scale == 0.0) {
        return (x - location) / scale;
    }
    // A difference that might overflow is formed from halves, which loses nothing at this size.
    const bool isHuge = std::fabs(x) > 4e307 || std::fabs(location) > 4e307;
    const double difference = isHuge ? 0.5 * x - 0.5 * location : x - location;
    const double limit = isHuge ? 0.5 * kLargestDouble : kLargestDouble;
    const double magnitude = std::fabs(scale);
    const bool isInfinite = magnitude < 1.0 ? std::fabs(difference) > limit * magnitude
                                            : std::fabs(difference) / magnitude > limit;
    if (isInfinite) {
        const double infinity = std::numeric_limits<double>::infinity();
        return (difference > 0.0) == (scale > 0.0) ? infinity : -infinity;
    }
    const double quotient = difference / scale;
    return isHuge ? quotient * 2.0 : quotient;
}

}  // namespace vela::kernels
