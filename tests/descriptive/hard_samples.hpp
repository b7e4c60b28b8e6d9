#ifndef VELA_TESTS_DESCRIPTIVE_HARD_SAMPLES_HPP
#define VELA_TESTS_DESCRIPTIVE_HARD_SAMPLES_HPP

#include "support/reference_cases.hpp"
#include "support/special_values.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>
#include <random>

namespace vela::test {

/// Samples that take every branch of the faster loops over moments, or are the worst for some way
/// to sort: deviations that are tiny, overflow or are not finite, means near 0, ties, both zeros,
/// clusters that agree in most bits, decimal and other fractions, NaN of both signs, data in order.
inline std::vector<Values> hard_samples(std::size_t n) {
    std::mt19937_64 bits(n);
    const auto uniform = [&] { return static_cast<double>(bits() >> 11U) * 0x1p-53; };
    const auto integer = [&](unsigned bound) { return static_cast<double>(bits() % bound); };
    const auto any_double = [&] { return std::bit_cast<double>(bits()); };
    // Signalling ones, too: with a sign, the first two have the highest images of all values.
    const double nans[] = {std::bit_cast<double>(0x7FF0000000000001),
                           std::bit_cast<double>(0x7FF0000000000002), kNaN};
    const auto any_nan = [&] { return std::copysign(nans[bits() % 3U], uniform() - 0.5); };
    double position = 0.0;
    const std::function<double()> sources[] = {
        [&] { return 100.0 + uniform(); },
        [&] { return uniform() - 0.5; },
        [&] { return integer(5) - 2.0; },
        [&] { return std::ldexp(uniform() - 0.5, static_cast<int>(bits() % 80U)); },
        [&] { return std::ldexp(1.0 + integer(64) * 0x1p-50, -static_cast<int>(bits() % 64U)); },
        [&] { return std::ldexp(uniform() - 0.5, -1060); },
        [&] { return std::ldexp(uniform() - 0.5, -800); },
        [&] { return std::ldexp(uniform(), 1023); },
        [&] { return std::copysign(integer(3) * 5e-324, uniform() - 0.5); },
        [&] { return bits() % 50U == 0U ? kInfinity : uniform(); },
        [&] { return bits() % 50U == 0U ? any_nan() : (integer(99) - 9.0) / 7.0; },
        [&] { return bits() % 3U == 0U ? kInfinity : any_nan(); },
        [&] { return (integer(9000) - 500.0) / 100.0; },
        [&] { return (integer(9000) - 500.0) / 7.0; },
        [&] { return bits() % 97U == 0U ? -0.0 : integer(4000) * 1e5 + 1e-6; },
        [&] { return bits() % 17U == 0U ? 1e300 : 1.0 + integer(999) * 0x1p-52; },
        [&] {
            return bits() % 50U == 0U ? 1e308 * (1.0 - 2.0 * integer(2)) : integer(4096) * 1e-315;
        },
        any_double,
        [&] { return position += 1.0; },
        [&] { return position -= 1.0; },
        [&] { return std::floor(position -= 0.375); },
        [] { return 3.25; },
    };
    std::vector<Values> samples;
    for (const auto& source : sources) {
        samples.emplace_back(n);
        std::generate(samples.back().begin(), samples.back().end(), source);
    }
    return samples;
}

}  // namespace vela::test

#endif
