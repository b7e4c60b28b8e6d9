// Prints how much work the calls of each distribution function are, for each value of the first
// argument: the basic blocks of the library that run over the grid of the other arguments. Then the
// work of other exercises with larger samples, whose searches have something to do.

#include "fuzz/exercise.hpp"
#include "support/entries.hpp"

#include <cstdio>
#include <map>
#include <span>

extern thread_local std::uint64_t blocksRun;

using namespace vela::test;

int main() {
    std::mt19937_64 bits(20261121);
    std::printf("Compiler %s\n", __VERSION__);
    print_c_library(bits);
    std::map<std::string, std::map<double, std::uint64_t>> work;
    for (const Entry& entry : entries()) {
        for_each_grid_point(entry, [&](const Arguments& arguments) {
            const std::uint64_t before = blocksRun;
            entry.scalar(arguments);
            work[entry.name][arguments[0]] += blocksRun - before;
        });
    }
    for (const Exercise& exercise : std::span(kExercises).subspan<1>()) {
        for (int i = 0; i < 60; ++i) {
            Results results;
            const std::uint64_t before = blocksRun;
            exercise.run(bits, results, 50);
            work[exercise.name][i] = blocksRun - before;
        }
    }
    for (const auto& [name, calls] : work) {
        std::printf("%s", name.c_str());
        for (const auto& [call, blocks] : calls) {
            std::printf(" %llu", static_cast<unsigned long long>(blocks));
        }
        std::puts("");
    }
}
