#ifndef VELA_KERNELS_BETA_LOG_HPP
#define VELA_KERNELS_BETA_LOG_HPP

#include "kernels/double_double.hpp"

#include <cmath>

/// Logarithms in two doubles, about 2^-66 relative: enough for an exponent of magnitude 700 whose
/// exponential has to be good to the last bit. None of them takes 0, a negative or a NaN.
namespace vela::kernels {

/// ln s for 0 < s <= 1e300; relative accuracy is lost next to 1, where
/// log1p_two_doubles() has it.
DoubleDouble log_two_doubles(DoubleDouble s);

/// ln(1 + d) for -0.5 <= d <= 1e300.
DoubleDouble log1p_two_doubles(DoubleDouble d);

/// d - ln(1 + d) for -0.5 <= d <= 1e300, without cancellation near 0: the deviance of one cell.
DoubleDouble log1p_deficit(DoubleDouble d);

/// a d(mean / a) with d(u) = u - 1 - ln u: the deviance of a count a from its mean, where
/// excess = mean - a is known to two doubles of its own.
inline DoubleDouble deviance(double a, DoubleDouble excess, DoubleDouble mean) {
    const DoubleDouble d = excess / a;
    return (d.hi >= -0.5 ? log1p_deficit(d) : d - log_two_doubles(mean / a)) * a;
}

/// exp(-e), 0 from where no double is left.
inline double exp_minus(DoubleDouble e) {
    constexpr double noDoubleLeft = 745.0;
    return e.hi > noDoubleLeft ? 0.0 : std::exp(-e.hi) * (1.0 - e.lo);
}

}  // namespace vela::kernels

#endif
