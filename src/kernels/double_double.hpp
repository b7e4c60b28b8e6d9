#ifndef VELA_KERNELS_DOUBLE_DOUBLE_HPP
#define VELA_KERNELS_DOUBLE_DOUBLE_HPP

#include <bit>
#include <cstdint>

/// Numbers held as an unevaluated sum of two doubles, for the exponents of the far tails: an
/// exponent of magnitude 644 in a single double already costs 6e-14 of the tail. Dekker (1971),
/// without a fused multiply-add, which is slow where the hardware has none.
namespace vela::kernels {

/// hi + lo with |lo| at most a few ulps of hi. Products and quotients leave it at that: making lo
/// the smallest possible would put it into the chain of operations that hi waits for.
struct DoubleDouble {
    double hi = 0.0;
    double lo = 0.0;
};

/// a + b exactly, in any order of magnitude.
constexpr DoubleDouble two_sum(double a, double b) {
    const double sum = a + b;
    const double bRounded = sum - a;
    return {sum, (a - (sum - bRounded)) + (b - bRounded)};
}

/// a + b exactly where |a| >= |b| or a == 0.
constexpr DoubleDouble quick_two_sum(double a, double b) {
    const double sum = a + b;
    return {sum, b - (sum - a)};
}

/// The leading 26 bits of x. Cutting bits cannot overflow, unlike the usual multiplication.
constexpr double leading_half(double x) {
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(x) & 0xFFFFFFFFF8000000u);
}

/// a b to 2^-104, as long as a b neither overflows nor comes near the denormal numbers.
constexpr DoubleDouble two_product(double a, double b) {
    const double product = a * b;
    const double aHi = leading_half(a);
    const double bHi = leading_half(b);
    const double aLo = a - aHi;
    const double bLo = b - bHi;
    return {product, ((aHi * bHi - product) + aHi * bLo + aLo * bHi) + aLo * bLo};
}

constexpr DoubleDouble operator-(DoubleDouble a) { return {-a.hi, -a.lo}; }

constexpr DoubleDouble operator+(DoubleDouble a, DoubleDouble b) {
    const DoubleDouble sum = two_sum(a.hi, b.hi);
    return quick_two_sum(sum.hi, sum.lo + (a.lo + b.lo));
}

constexpr DoubleDouble operator-(DoubleDouble a, DoubleDouble b) { return a + -b; }

constexpr DoubleDouble operator*(DoubleDouble a, double b) {
    const DoubleDouble product = two_product(a.hi, b);
    return {product.hi, product.lo + a.lo * b};
}

constexpr DoubleDouble operator*(DoubleDouble a, DoubleDouble b) {
    const DoubleDouble product = two_product(a.hi, b.hi);
    return {product.hi, product.lo + (a.hi * b.lo + a.lo * b.hi)};
}

constexpr DoubleDouble operator/(DoubleDouble a, double b) {
    const double quotient = a.hi / b;
    const DoubleDouble back = two_product(quotient, b);
    return {quotient, ((a.hi - back.hi) - back.lo + a.lo) / b};
}

constexpr DoubleDouble operator/(DoubleDouble a, DoubleDouble b) {
    const double quotient = a.hi / b.hi;
    const DoubleDouble rest = a - b * quotient;
    return {quotient, rest.hi / b.hi};
}

}  // namespace vela::kernels

#endif
