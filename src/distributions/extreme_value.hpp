#ifndef VELA_DISTRIBUTIONS_EXTREME_VALUE_HPP
#define VELA_DISTRIBUTIONS_EXTREME_VALUE_HPP

#include "conventions/fp_environment.hpp"
#include "distributions/exponential.hpp"

#include <cmath>

/// The standard smallest extreme value W, the logarithm of a unit exponential variable; the largest
/// is -W. Both families are written in w, the smallest one's z and minus the largest one's.
namespace vela::distributions {

inline double extreme_value_density(double w, double scale) {
    constexpr double vanishing = 700.0;  // of exp(w) in an exponent
    return conventions::value_unless_overflow(
        0.0, [=] { return w > vanishing ? 0.0 : exp_over(std::exp(w) - w, scale); });
}

/// P(W > w) or P(W <= w).
inline double extreme_value_tail(double w, bool upper) {
    return conventions::value_unless_overflow(
        upper ? 0.0 : 1.0, [=] { return unit_exponential_tail(kernels::safe_exp(w), upper); });
}

}  // namespace vela::distributions

#endif
