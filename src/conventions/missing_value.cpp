#include "vela/missing_value.hpp"

#include <cmath>

namespace vela {

bool IsNaN(double x) { return x != x; }

bool IsResultNA(double x) { return IsNaN(x); }

bool IsInfinity(double x) { return std::isinf(x); }

bool IsPlusInfinity(double x) { return std::isinf(x) && !std::signbit(x); }

bool IsMinusInfinity(double x) { return std::isinf(x) && std::signbit(x); }

}  // namespace vela
