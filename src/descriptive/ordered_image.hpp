#ifndef VELA_DESCRIPTIVE_ORDERED_IMAGE_HPP
#define VELA_DESCRIPTIVE_ORDERED_IMAGE_HPP

#include <bit>
#include <cstdint>

/// Doubles as integers of the same order, so that data with NaN sorts by a total order and no
/// comparison can raise a floating-point fault.
namespace vela::descriptive {

// The images of negative NaN, which the plain order of the bits puts below -infinity; taking them
// off moves those NaN, by wrapping, to the top, behind the positive ones.
inline constexpr std::uint64_t kNegativeNaNs = 0x000FFFFFFFFFFFFF;
inline constexpr std::uint64_t kSignBit = 0x8000000000000000;
inline constexpr std::uint64_t kPlusInfinityImage = 0xFFE0000000000001;  // above it: NaN
inline constexpr std::uint64_t kNaNImage = 0xFFFFFFFFFFFFFFFF;
inline constexpr std::uint64_t kInfinityBits = 0x7FF0000000000000;
inline constexpr std::uint64_t kZeroImage = kSignBit - kNegativeNaNs;

/// One to one: -infinity is 0, -0.0 comes right before 0.0, every NaN after +infinity.
inline std::uint64_t image_of(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    return (bits ^ ((0 - (bits >> 63U)) | kSignBit)) - kNegativeNaNs;
}

inline double value_of(std::uint64_t image) {
    const std::uint64_t ordered = image + kNegativeNaNs;
    return std::bit_cast<double>(ordered ^ (((ordered >> 63U) - 1) | kSignBit));
}

inline bool is_nan_image(std::uint64_t image) { return image > kPlusInfinityImage; }

/// Has the sign bit set for infinities and NaN only; compilers do two of these at once.
inline std::uint64_t raise_non_finite(double value) {
    return (std::bit_cast<std::uint64_t>(value) & ~kSignBit) + 0x0010000000000000;
}

/// The same order with one image for both zeros and one for every NaN. Numbers whose last bits are
/// 0, as those of integers are, differ in the leading bits of their images only, whatever the sign.
inline std::uint64_t tie_image_of(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const std::uint64_t isNegative = 0 - (bits >> 63U);                          // all bits or none
    const std::uint64_t steps = ((bits & ~kSignBit) ^ isNegative) - isNegative;  // away from zero
    const std::uint64_t image = steps + kInfinityBits;
    return image > 2 * kInfinityBits ? kNaNImage : image;
}

/// A zero of either sign as 0.0.
inline double value_of_tie_image(std::uint64_t image) {
    const std::uint64_t steps = image - kInfinityBits;
    const std::uint64_t isNegative = 0 - (steps >> 63U);  // all bits or none
    return std::bit_cast<double>(((steps ^ isNegative) - isNegative) | (isNegative & kSignBit));
}

}  // namespace vela::descriptive

#endif
