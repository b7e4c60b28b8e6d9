#ifndef VELA_DESCRIPTIVE_KNOWN_DIVISOR_HPP
#define VELA_DESCRIPTIVE_KNOWN_DIVISOR_HPP

#include "descriptive/kahan.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
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

/// 1 / divisor as the sum of two words.
struct Reciprocal {
    double high;
    double low;
};

/// Divides; for every machine and rounding direction.
class PlainDivisor {
public:
    static Reciprocal reciprocal(double divisor) { return {1.0 / divisor, 0.0}; }

    PlainDivisor(double divisor, const Reciprocal& reciprocal)
        : m_divisor(divisor), m_reciprocal(reciprocal.high) {}

    double quotient(double dividend) const { return dividend / m_divisor; }
    Pair quotient(Pair dividends) const { return dividends / m_divisor; }

    /// addend + dividend / divisor, but for a few roundings, and sooner.
    template <class Value>
    Value estimate(Value addend, Value dividend) const {
        return addend + dividend * m_reciprocal;
    }

private:
    double m_divisor;
    double m_reciprocal;
};

/// Multiplies instead; for whole divisors from 2 to 2^32 and rounding to nearest.
class FusedDivisor {
public:
    static Reciprocal reciprocal(double divisor) {
        const double high = 1.0 / divisor;
        return {high, std::fma(-high, divisor, 1.0) * high};
    }

    FusedDivisor(double divisor, const Reciprocal& reciprocal)
        : m_divisor(divisor), m_high(reciprocal.high), m_low(reciprocal.low) {}

    double quotient(double dividend) const {
        const auto key =
            static_cast<std::int64_t>(range_key(std::bit_cast<std::uint64_t>(dividend)));
        if (key < 0) [[unlikely]] {
            return dividend / m_divisor;
        }
        return std::fma(dividend, m_high, dividend * m_low);
    }

    Pair quotient(Pair dividends) const {
        using Bits [[gnu::vector_size(16)]] = std::uint64_t;
        const Bits keys = range_key(std::bit_cast<Bits>(dividends));
        if (kernels::any_sign(std::bit_cast<Pair>(keys))) [[unlikely]] {
            return dividends / m_divisor;
        }
        const Pair low = dividends * m_low;
        return Pair{std::fma(dividends[0], m_high, low[0]), std::fma(dividends[1], m_high, low[1])};
    }

    double estimate(double addend, double dividend) const {
        return std::fma(dividend, m_high, addend);
    }

    Pair estimate(Pair addends, Pair dividends) const {
        return Pair{std::fma(dividends[0], m_high, addends[0]),
                    std::fma(dividends[1], m_high, addends[1])};
    }

private:
    /// The sign bit says that the magnitude is below 2^-512 or not below 2^512. The products of a
    /// tiny dividend could be rounded as denormal numbers or lose the sign of zero; infinities and
    /// NaN could meet as inf - inf. The range is narrower than need be for the sake of one test.
    template <class Bits>
    static Bits range_key(Bits bits) {
        constexpr std::uint64_t kSmallest = std::bit_cast<std::uint64_t>(0x1p-512);
        return bits + bits - (kSmallest + kSmallest);
    }

    double m_divisor;
    double m_high;
    double m_low;
};

template <std::size_t size>
struct Reciprocals {
    double high[size];
    double low[size];
};

inline constexpr unsigned int kTabulated = 64;

/// Those of 1 to 64, for short samples; exact products with a half of each reciprocal stand for the
/// fused multiply-add, which the compiler may not evaluate.
inline constexpr auto kReciprocals = [] {
    Reciprocals<kTabulated> table{};
    double divisor = 1.0;
    for (unsigned int i = 0; i < kTabulated; ++i) {
        const double high = 1.0 / divisor;
        const double half = static_cast<float>(high);
        table.high[i] = high;
        table.low[i] = ((1.0 - half * divisor) - (high - half) * divisor) * high;
        divisor += 1.0;
    }
    return table;
}();

/// Calls step(i, before, count) for i from `first` to n - 1, where count divides by before + 1 and
/// before is i as a double. The reciprocals come from the table or, several in one instruction, a
/// block ahead of the chains of the steps.
template <class Divisor, class Step>
void for_counts(unsigned int first, unsigned int n, const Step& step) {
    double before = first;
    const auto take_step = [&](unsigned int at, double high, double low) {
        step(at, before, Divisor(before + 1.0, Reciprocal{high, low}));
        before += 1.0;
    };
    // Two at a time, because copying the sums from one value to the next takes time too. The odd
    // one comes last: ahead of the loop, the compiler would fold its operations with the zeros that
    // sums begin with, as is right for rounding to nearest only. And written out for both sources
    // of reciprocals, because through a shared loop every value costs 6% more.
    unsigned int i = first;
    if (i < kTabulated) {
        const unsigned int end = std::min(n, kTabulated);
        for (; i + 1 < end; i += 2) {
            take_step(i, kReciprocals.high[i], kReciprocals.low[i]);
            take_step(i + 1, kReciprocals.high[i + 1], kReciprocals.low[i + 1]);
        }
        if (i < end) {
            take_step(i, kReciprocals.high[i], kReciprocals.low[i]);
            ++i;
        }
    }
    constexpr unsigned int kBlock = 16;
    while (i < n) {
        Reciprocals<kBlock> block;
        const double divisor = before + 1.0;
        for (unsigned int k = 0; k < kBlock; ++k) {
            const Reciprocal reciprocal = Divisor::reciprocal(divisor + k);
            block.high[k] = reciprocal.high;
            block.low[k] = reciprocal.low;
        }
        const unsigned int size = std::min(n - i, kBlock);
        unsigned int k = 0;
        for (; k + 1 < size; k += 2) {
            take_step(i + k, block.high[k], block.low[k]);
            take_step(i + k + 1, block.high[k + 1], block.low[k + 1]);
        }
        if (k < size) {
            take_step(i + k, block.high[k], block.low[k]);
        }
        i += size;
    }
}

// Arguments stand beside the loop, to stay in registers: in its closure they would go through memory
// and be copied there, which takes a tenth of the time of a short sample.

// Never inlined, since its stack frame would burden the other loop.
template <class Loop, class... Arguments>
[[gnu::noinline]] auto with_plain_divisor(Loop loop, Arguments... arguments) {
    return loop.template operator()<PlainDivisor>(arguments...);
}

#if defined(__x86_64__)

template <class Loop, class... Arguments>
[[gnu::target("fma"), gnu::flatten]] auto with_fused_divisor(Loop loop, Arguments... arguments) {
    return loop.template operator()<FusedDivisor>(arguments...);
}

/// Runs a loop, a lambda of the form []<class Divisor>(arguments) { ... }, with the faster divisor,
/// and returns its result.
template <class Loop, class... Arguments>
auto with_fastest_divisor(Loop loop, Arguments... arguments) {
    constexpr unsigned int kRoundingDirection = 0x6000;  // in the control word; 0 is to nearest
    const bool canFuse =
        __builtin_cpu_supports("fma") && (__builtin_ia32_stmxcsr() & kRoundingDirection) == 0;
    return canFuse ? with_fused_divisor(loop, arguments...)
                   : with_plain_divisor(loop, arguments...);
}

#else

template <class Loop, class... Arguments>
auto with_fastest_divisor(Loop loop, Arguments... arguments) {
    return with_plain_divisor(loop, arguments...);
}

#endif

}  // namespace vela::descriptive

#endif
