#ifndef VELA_TESTS_SUPPORT_EQUALITY_HPP
#define VELA_TESTS_SUPPORT_EQUALITY_HPP

#include <bit>
#include <cmath>
#include <cstdint>

namespace vela::test {

/// Equal bit for bit, except that every NaN equals every NaN.
inline bool same_bits(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) || (a != a && b != b);
}

/// |got - expected| <= tolerance * |expected|; infinities and NaN must match exactly.
inline bool within_relative(double got, double expected, double tolerance) {
    return same_bits(got, expected) || got == expected ||
           (std::isfinite(got) && std::isfinite(expected) &&
            std::fabs(got - expected) <= tolerance * std::fabs(expected));
}

}  // namespace vela::test

#endif
