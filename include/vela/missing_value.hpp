#ifndef VELA_MISSING_VALUE_HPP
#define VELA_MISSING_VALUE_HPP

#include "vela/api.hpp"

namespace vela {

/// The code of a missing value: an ordinary finite double, recognised by exact equality only.
///
/// A caller may put it into an array to mark a missing observation where a function says that it
/// looks for it. No function returns it as a missing result: that is always a quiet NaN.
inline constexpr double MissingValue = 1.23456e30;

/// True when @p x is a NaN of any kind.
VELA_API bool IsNaN(double x);

/// True when @p x is the missing result of a library function; the same test as IsNaN().
VELA_API bool IsResultNA(double x);

/// True for plus and minus infinity; false for every finite value, ::MissingValue included.
VELA_API bool IsInfinity(double x);

/// True for plus infinity only.
VELA_API bool IsPlusInfinity(double x);

/// True for minus infinity only.
VELA_API bool IsMinusInfinity(double x);

}  // namespace vela

#endif
