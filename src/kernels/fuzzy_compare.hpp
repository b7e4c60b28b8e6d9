#ifndef VELA_KERNELS_FUZZY_COMPARE_HPP
#define VELA_KERNELS_FUZZY_COMPARE_HPP

#include <algorithm>
#include <cmath>

namespace vela::kernels {

/// 0 when a and b are equal within a relative 1e-12 and an absolute tolerance (1e-30, or 1e-14 of
/// `scale` where that is not 0); otherwise -1 when b > a and 1 when not.
///
/// An infinite argument equals everything: whoever tests for integers guards infinities before.
inline int fuzzy_compare(double a, double b, double scale) {
    const double absolute = scale == 0.0 ? 1e-30 : scale * 1e-14;
    if (std::fabs(a - b) <= std::max(std::fabs(a), std::fabs(b)) * 1e-12 + absolute) {
        return 0;
    }
    return b > a ? -1 : 1;
}

}  // namespace vela::kernels

#endif
