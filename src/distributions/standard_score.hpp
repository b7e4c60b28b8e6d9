#ifndef VELA_DISTRIBUTIONS_STANDARD_SCORE_HPP
#define VELA_DISTRIBUTIONS_STANDARD_SCORE_HPP

#include "conventions/fp_environment.hpp"
#include "conventions/quiet_nan.hpp"
#include "kernels/location_scale.hpp"
#include "vela/missing_value.hpp"

#include <cmath>

namespace vela::distributions {

/// (x - location) / scale; NaN for a scale that is not positive and for any NaN, without a fault.
inline double standard_score(double x, double location, double scale) {
    return std::isgreater(scale, 0.0) ? kernels::standardize(x, location, scale)
                                      : conventions::kNaN;
}

/// location + z scale; MissingValue where that overflows and for a scale that is not positive and
/// finite.
inline double from_standard_score(double z, double location, double scale) {
    if (!std::isgreater(scale, 0.0) || std::isinf(scale)) {
        return MissingValue;
    }
    return conventions::value_unless_overflow(
        MissingValue, [=] { return kernels::unstandardize(z, location, scale); });
}

/// Whether p is a probability strictly between 0 and 1; false for NaN.
inline bool is_inner_probability(double p) { return std::isgreater(p, 0.0) && std::isless(p, 1.0); }

}  // namespace vela::distributions

#endif
