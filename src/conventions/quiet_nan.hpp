#ifndef VELA_CONVENTIONS_QUIET_NAN_HPP
#define VELA_CONVENTIONS_QUIET_NAN_HPP

#include "vela/missing_value.hpp"

#include <limits>

namespace vela::conventions {

/// The only NaN that the library produces itself.
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// What a caller sees of an internal result.
inline double nan_if_missing(double result) { return result == MissingValue ? kNaN : result; }

}  // namespace vela::conventions

#endif
