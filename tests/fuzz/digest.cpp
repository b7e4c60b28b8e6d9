// Prints a digest of at least 400,000 results over the whole interface: for comparison between
// builds (compilers, optimisation, shared and static, with and without the newer instructions), and
// with the digest on record. The first line is that of the C library's functions, on whose last
// bits ours depend.

#include "fuzz/exercise.hpp"

#include <cmath>
#include <cstdio>
#include <random>
#include <vector>

namespace {

using vela::test::Bytes;
using vela::test::Results;

std::vector<std::uint8_t> draw(std::mt19937_64& bits, std::size_t size) {
    std::vector<std::uint8_t> drawn(size);
    for (std::uint8_t& byte : drawn) {
        byte = static_cast<std::uint8_t>(bits());
    }
    return drawn;
}

void print(const char* name, const Results& results) {
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
    print("C library", results);
}

}  // namespace

int main() {
    constexpr std::size_t kResultsOfEach = 100'000;
    constexpr void (*exercises[])(Bytes&, Results&) = {
        vela::test::exercise_distributions, vela::test::exercise_arrays,
        vela::test::exercise_records, vela::test::exercise_clustering};
    constexpr const char* names[] = {"distributions", "arrays", "records", "clustering"};
    std::mt19937_64 bits(20261121);
    print_c_library(bits);
    for (int i = 0; i < 4; ++i) {
        Results results;
        while (results.count() < kResultsOfEach) {
            const std::vector<std::uint8_t> drawn = draw(bits, 4096);
            Bytes bytes(drawn.data(), drawn.size());
            exercises[i](bytes, results);
        }
        print(names[i], results);
    }
}
