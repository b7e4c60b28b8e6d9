#include "fuzz/exercise.hpp"

#include "support/special_values.hpp"
#include "vela/missing_value.hpp"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <vector>

namespace vela::test {
namespace {

enum class Kind : std::uint8_t { kSpecial, kInteger, kFraction, kOrdinary, kAnyBits, kCount };

Kind next_kind(Bytes& bytes) {
    return static_cast<Kind>(bytes.next<std::uint8_t>() % static_cast<unsigned>(Kind::kCount));
}

double special(unsigned index) {
    constexpr double values[] = {0.0,     -0.0,         kNaN,         kInfinity, -kInfinity,
                                 DBL_MAX, -DBL_MAX,     DBL_TRUE_MIN, DBL_MIN,   1.0 - 0x1p-53,
                                 0.5,     2147483648.0, MissingValue};
    return values[index % std::size(values)];
}

/// Any bits but those of a signalling NaN, which is a fault wherever it is first read: for a
/// parameter that may be in an array call only, ahead of the loop.
double quiet(std::uint64_t bits) {
    const bool isNaN = (bits << 1U) > (std::uint64_t{0x7FF} << 53U);
    return std::bit_cast<double>(isNaN ? bits | (std::uint64_t{1} << 51U) : bits);
}

double number_of(Kind kind, Bytes& bytes) {
    switch (kind) {
        case Kind::kSpecial: return special(bytes.next<std::uint8_t>());
        case Kind::kInteger: return bytes.next<std::int8_t>();
        case Kind::kFraction: return static_cast<double>(bytes.next<std::uint32_t>()) * 0x1p-32;
        case Kind::kOrdinary: {
            const auto digits = bytes.next<std::int32_t>();  // in this order under every compiler
            return std::ldexp(digits, bytes.next<std::int8_t>() / 4 - 31);
        }
        default: return quiet(bytes.next<std::uint64_t>());
    }
}

}  // namespace

double Bytes::number() { return number_of(next_kind(*this), *this); }

double Bytes::fraction() {
    return number_of(next<std::uint8_t>() % 8 == 0 ? Kind::kSpecial : Kind::kFraction, *this);
}

Sample make_sample_of(Bytes& bytes, std::uint32_t count) {
    Sample sample{count, std::make_unique<double[]>(count)};
    const bool mixed = bytes.next<std::uint8_t>() % 2 == 0;
    const Kind kind = next_kind(bytes);
    for (std::uint32_t i = 0; i < count; ++i) {
        sample.values[i] = mixed ? bytes.number() : number_of(kind, bytes);
    }
    return sample;
}

Sample make_sample(Bytes& bytes, unsigned most) {
    return make_sample_of(bytes, bytes.below(most * bytes.scale() + 1));
}

void Exercise::run(std::mt19937_64& bits, Results& results, unsigned scale) const {
    std::vector<std::uint8_t> drawn(std::size_t{4096} * scale);
    std::generate(drawn.begin(), drawn.end(), [&] { return static_cast<std::uint8_t>(bits()); });
    Bytes bytes(drawn.data(), drawn.size(), scale);
    call(bytes, results);
}

void print_digest(const char* name, const Results& results) {
    std::printf("%s %016llx\n", name, static_cast<unsigned long long>(results.digest()));
}

void print_c_library(std::mt19937_64& bits) {
    Results results;
    for (int i = 0; i < 50'000; ++i) {
        const double u = static_cast<double>(bits() >> 11U) * 0x1p-53;
        const double x = std::ldexp(u, static_cast<int>(bits() % 24U) - 14);
        results.add_each(std::exp(-x), std::expm1(x), std::log(x), std::log1p(x), std::log(u),
                         std::pow(u, x), std::pow(1.0 + x, 1.0 / u), std::tan(u), std::atan(x),
                         std::asin(u), std::sinh(u), std::erfc(u), std::hypot(x, u));
    }
    print_digest("C library", results);
}

}  // namespace vela::test
