// Prints a digest of at least 400,000 results over the whole interface: for comparison between
// builds (compilers, optimisation, shared and static, with and without the newer instructions), and
// with the digest on record.

#include "fuzz/exercise.hpp"

int main() {
    std::mt19937_64 bits(20261121);
    vela::test::print_c_library(bits);
    for (const vela::test::Exercise& exercise : vela::test::kExercises) {
        vela::test::Results results;
        while (results.count() < 100'000) {
            exercise.run(bits, results);
        }
        vela::test::print_digest(exercise.name, results);
    }
}
