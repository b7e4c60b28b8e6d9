#ifndef VELA_DESCRIPTIVE_DECIMAL_STEPS_HPP
#define VELA_DESCRIPTIVE_DECIMAL_STEPS_HPP

#include <bit>
#include <cstddef>
#include <cstdint>

/// Decimal fractions as the whole numbers that they are of tenths, hundredths and so on. Their
/// binary digits do not end, so that no leading part of them tells two equal values from two that
/// are only close; these numbers are short.
namespace vela::descriptive {

/// Adding this rounds a number below 2^51 to a whole one and leaves it in the last bits.
inline constexpr double kStepsFromHere = 0x1.8p52;

/// Whether the value is a whole number divided by the scale. Then no other value has that number,
/// because a quotient is rounded in one way only, and the larger value has the larger number.
inline bool is_decimal(double value, double scale) {
    const double step = (value * scale + kStepsFromHere) - kStepsFromHere;
    return step / scale == value;
}

/// Zero, or a number of ordinary size, of which no product below faults.
inline bool is_ordinary(double value) {
    constexpr auto kSmallest = std::bit_cast<std::uint64_t>(0x1p-31);
    constexpr auto kLargest = std::bit_cast<std::uint64_t>(0x1p31);
    const std::uint64_t magnitude = std::bit_cast<std::uint64_t>(value) << 1U >> 1U;
    return magnitude == 0 || magnitude - kSmallest <= kLargest - kSmallest;
}

/// The least power of ten that makes all values whole numbers, at most a million; 0 if none does.
inline double decimal_scale(const double* x, std::size_t n) {
    double scale = 1.0;
    for (std::size_t i = 0; i < n;) {
        if (!is_ordinary(x[i])) {
            return 0.0;
        }
        if (is_decimal(x[i], scale)) {
            ++i;
            continue;
        }
        scale *= 10.0;
        if (scale > 1e6) {
            return 0.0;
        }
        i = 0;  // where rounding is directed, a tenth need not be ten hundredths
    }
    return scale;
}

/// A word in the order of the values, for a scale that decimal_scale() gave.
inline std::uint64_t decimal_step(double value, double scale) {
    return std::bit_cast<std::uint64_t>(value * scale + kStepsFromHere);
}

}  // namespace vela::descriptive

#endif
