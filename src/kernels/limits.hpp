#ifndef VELA_KERNELS_LIMITS_HPP
#define VELA_KERNELS_LIMITS_HPP

namespace vela::kernels {

/// A quantity whose natural logarithm lies below this counts as 0 (the quantity is about 2e-288,
/// far enough above the smallest normal double that a few more factors cannot make it denormal).
inline constexpr double kLogUnderflow = -662.34472;
inline constexpr double kUnderflow = 2.2250738585072014e-288;

/// A quantity whose natural logarithm lies above this counts as too large for a double.
inline constexpr double kLogOverflow = 709.78271;

/// What a kernel writes in place of a result that it could not compute: plus for probabilities,
/// minus for quantiles.
inline constexpr double kLargestDouble = 1.7976931348623157e308;

/// Terms below this end the series of the incomplete gamma family.
inline constexpr double kGammaTermTolerance = 1e-9;

}  // namespace vela::kernels

#endif
