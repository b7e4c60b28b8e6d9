// Prints a digest of at least 200,000 results over the whole interface, for comparison between
// builds: compilers, optimisation, shared and static, with and without the newer instructions.

#include "fuzz/exercise.hpp"

#include <cstdio>
#include <random>
#include <vector>

int main() {
    using namespace vela::test;
    constexpr std::size_t kResultsOfEach = 50'000;
    constexpr void (*exercises[])(Bytes&, Results&) = {exercise_distributions, exercise_arrays,
                                                       exercise_records, exercise_clustering};
    constexpr const char* names[] = {"distributions", "arrays", "records", "clustering"};
    std::mt19937_64 bits(20261121);
    std::vector<std::uint8_t> buffer(4096);
    for (int i = 0; i < 4; ++i) {
        Results results;
        while (results.count() < kResultsOfEach) {
            for (std::uint8_t& byte : buffer) {
                byte = static_cast<std::uint8_t>(bits());
            }
            Bytes bytes(buffer.data(), buffer.size());
            exercises[i](bytes, results);
        }
        std::printf("%s %016llx\n", names[i], static_cast<unsigned long long>(results.digest()));
    }
}
