#ifndef VELA_HYPOTHESIS_HPP
#define VELA_HYPOTHESIS_HPP

#include <cstdint>

namespace vela {

/// The alternative hypothesis of a test; the values coincide with those of EAlternative.
///
/// | value | alternative  | P-value                                 |
/// |-------|--------------|-----------------------------------------|
/// | -1    | less than    | lower-tail probability of the statistic |
/// | 0     | not equal    | twice the smaller tail probability      |
/// | 1     | greater than | upper-tail probability                  |
///
/// Any other value gives the P-value 0.
enum class AlternativeHypothesis : std::int32_t { LessThan = -1, NotEqual = 0, GreaterThan = 1 };

/// Which ends a confidence interval has, at confidence C, for an estimate with standard error SE
/// and a reference distribution with lower-tail quantile q:
///
/// | value | interval         | lower end                     | upper end                     |
/// |-------|------------------|-------------------------------|-------------------------------|
/// | -1    | upper bound only | minus infinity                | estimate + q(C) SE            |
/// | 0     | two-sided        | estimate - q((C + 1) / 2) SE  | estimate + q((C + 1) / 2) SE  |
/// | 1     | lower bound only | estimate - q(C) SE            | plus infinity                 |
///
/// An alternative pairs with the interval of the same value. Any other value makes both ends NaN
/// and the status 30002.
enum class IntervalType : std::int32_t { UpperBound = -1, TwoSided = 0, LowerBound = 1 };

}  // namespace vela

#endif
