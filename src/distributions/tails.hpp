#ifndef VELA_DISTRIBUTIONS_TAILS_HPP
#define VELA_DISTRIBUTIONS_TAILS_HPP

#include "conventions/error_channel.hpp"
#include "vela/missing_value.hpp"
#include "vela/p_values.hpp"

namespace vela::distributions {

/// Both tail probabilities at one point, each computed at its own precision.
struct Tails {
    double lower;  // P(X <= x)
    double upper;  // P(X > x)

    double pick(bool isUpper) const { return isUpper ? upper : lower; }
};

inline constexpr Tails kMissingTails{MissingValue, MissingValue};

/// The tails that a kernel of the form kernel(arguments..., &lower, &upper) writes, or missing ones
/// when it fails.
template <class Kernel, class... Arguments>
Tails tails_of(Kernel kernel, Arguments... arguments) {
    Tails tails{};
    kernel(arguments..., &tails.lower, &tails.upper);
    return conventions::kernel_failed() ? kMissingTails : tails;
}

/// The P-value of a statistic with these tails: one of them, or twice the smaller; 0 for an
/// alternative outside the enumeration.
inline double p_value(const Tails& tails, EAlternative alternative) {
    if (tails.lower == MissingValue) {
        return MissingValue;
    }
    switch (alternative) {
        case EAlternative::LowerTailed: return tails.lower;
        case EAlternative::UpperTailed: return tails.upper;
        case EAlternative::TwoSided:
            return 2.0 * (tails.lower <= tails.upper ? tails.lower : tails.upper);
    }
    return 0.0;
}

}  // namespace vela::distributions

#endif
