#ifndef VELA_BENCH_TEXT_TABLE_HPP
#define VELA_BENCH_TEXT_TABLE_HPP

#include <cstdio>
#include <string>
#include <vector>

namespace bench {

/// Lines of cells, the header first; the first column is text, the others are numbers.
using TextTable = std::vector<std::vector<std::string>>;

/// A double to the given number of decimals.
std::string fixed(double value, int decimals);

void print_aligned(std::FILE* file, const TextTable& table);
void print_markdown(std::FILE* file, const TextTable& table);

}  // namespace bench

#endif
