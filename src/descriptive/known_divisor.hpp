#ifndef VELA_DESCRIPTIVE_KNOWN_DIVISOR_HPP
#define VELA_DESCRIPTIVE_KNOWN_DIVISOR_HPP

#include "descriptive/kahan.hpp"

#include <bit>
#include <cfenv>
#include <cmath>
#include <cstdint>

/// Division by a whole number that is known before the dividend, as the count in a running mean.
///
/// A division costs about 14 cycles between one value and the next. With the reciprocal of the
/// divisor in two words, high + low, computed ahead, fma(d, high, d * low) takes 8 and gives the
/// same correctly rounded quotient (Brisebarre, Muller & Raina 2004, Accelerating correctly rounded
/// floating-point division when the divisor is known in advance, IEEE Transactions on Computers
/// 53). Whole divisors up to 2^32 need no further condition: a quotient of a 53-bit dividend is
/// never midway between two doubles, and at least 2^-86 of itself away from any such point, while
/// d * high + d * low is off by less than 2^-104 of it before its one rounding.
///
/// Only a fused multiply-add in hardware makes this fast, and x86-64 does not promise one: loops
/// are compiled for both divisors below and chosen at run time. The choice shows in no result.
namespace vela::descriptive {

/// Divides; for every machine and rounding direction.
class PlainDivisor {
public:
    explicit PlainDivisor(double divisor) : m_divisor(divisor), m_reciprocal(1.0 / divisor) {}

    double quotient(double dividend) const { return dividend / m_divisor; }
    Pair quotient(Pair dividends) const { return dividends / m_divisor; }

    /// addend + dividend / divisor, but for a few roundings, and sooner.
    double estimate(double addend, double dividend) const {
        return addend + dividend * m_reciprocal;
    }

private:
    double m_divisor;
    double m_reciprocal;
};

/// Multiplies instead; for whole divisors from 2 to 2^32 and rounding to nearest.
class FusedDivisor {
public:
    explicit FusedDivisor(double divisor)
        : m_divisor(divisor),
          m_high(1.0 / divisor),
          m_low(std::fma(-m_high, divisor, 1.0) * m_high) {}

    double quotient(double dividend) const {
        if (is_tiny_or_not_finite(dividend)) [[unlikely]] {
            return dividend / m_divisor;
        }
        return std::fma(dividend, m_high, dividend * m_low);
    }

    Pair quotient(Pair dividends) const {
        const double first = dividends[0];
        const double second = dividends[1];
        if (is_tiny_or_not_finite(first) || is_tiny_or_not_finite(second)) [[unlikely]] {
            return dividends / m_divisor;
        }
        const Pair low = dividends * m_low;
        return Pair{std::fma(first, m_high, low[0]), std::fma(second, m_high, low[1])};
    }

    double estimate(double addend, double dividend) const {
        return std::fma(dividend, m_high, addend);
    }

private:
    /// Magnitudes below 2^-800, where a product could be rounded as a denormal number or lose the
    /// sign of zero; infinities and NaN, where the two words could meet as inf - inf.
    static bool is_tiny_or_not_finite(double dividend) {
        constexpr std::uint64_t kSmallest = std::bit_cast<std::uint64_t>(0x1p-800) << 1U;
        constexpr std::uint64_t kInfinity = std::uint64_t{0x7FF} << 53U;
        const std::uint64_t magnitude = std::bit_cast<std::uint64_t>(dividend) << 1U;
        return magnitude - kSmallest >= kInfinity - kSmallest;
    }

    double m_divisor;
    double m_high;
    double m_low;
};

/// Up to this many values the plain division is the faster one: the loop is so short that the
/// processor works on one call while it waits in the chain of the call before, if only there are
/// few instructions in between.
inline constexpr unsigned int kFewQuotients = 12;

template <class Loop>
auto with_plain_divisor(const Loop& loop) {
    return loop.template operator()<PlainDivisor>();
}

#if defined(__x86_64__)

template <class Loop>
[[gnu::target("fma"), gnu::flatten]] auto with_fused_divisor(const Loop& loop) {
    return loop.template operator()<FusedDivisor>();
}

/// Runs a long loop, a lambda of the form []<class Divisor>() { ... }, with the faster divisor, and
/// returns its result.
template <class Loop>
auto with_fastest_divisor(const Loop& loop) {
    const bool canFuse = __builtin_cpu_supports("fma") && std::fegetround() == FE_TONEAREST;
    return canFuse ? with_fused_divisor(loop) : with_plain_divisor(loop);
}

#else

template <class Loop>
auto with_fastest_divisor(const Loop& loop) {
    return with_plain_divisor(loop);
}

#endif

}  // namespace vela::descriptive

#endif
