#ifndef VELA_KERNELS_BETA_LOG_HPP
#define VELA_KERNELS_BETA_LOG_HPP

#include "kernels/double_double.hpp"

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

}  // namespace vela::kernels

#endif
