#ifndef VELA_TESTS_SUPPORT_SPECIAL_VALUES_HPP
#define VELA_TESTS_SUPPORT_SPECIAL_VALUES_HPP

#include <limits>

namespace vela::test {

inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();

}  // namespace vela::test

#endif
