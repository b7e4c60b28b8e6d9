#ifndef VELA_KERNELS_COUNT_HPP
#define VELA_KERNELS_COUNT_HPP

#include "kernels/fuzzy_compare.hpp"

#include <cmath>

/// How every discrete family reads its argument.
namespace vela::kernels {

struct Count {
    double k;      // the support point that the tails at x belong to: x or the whole number below
    bool isWhole;  // x is that number, up to the tolerance of fuzzy_compare()
};

/// NaN, the infinities and what is nearly infinite come back as they are, as points that are not
/// whole and so without mass. Nothing faults.
inline Count count_at(double x) {
    if (std::isless(std::fabs(x), 2e9)) {
        const double truncated = static_cast<int>(x);  // much faster than rounding
        if (x == truncated) {
            return {truncated, true};
        }
    } else if (!std::isless(std::fabs(x), 1e300)) {
        return {x, false};
    }
    const double nearest = std::round(x);
    const bool isWhole = fuzzy_compare(x, nearest, 0.0) == 0;
    return {isWhole ? nearest : std::floor(x), isWhole};
}

}  // namespace vela::kernels

#endif
