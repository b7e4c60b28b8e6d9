#ifndef VELA_TESTS_SUPPORT_CSV_HPP
#define VELA_TESTS_SUPPORT_CSV_HPP

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace vela::test {

using Row = std::vector<std::string>;

/// Rows of a file in tests/data/, split at commas; lines that start with '#' and empty lines are
/// skipped. Throws std::runtime_error when the file is missing or has no rows.
std::vector<Row> read_csv(const std::string& fileName);

std::vector<std::string> split(const std::string& text, char separator);

/// The whole field as a double: decimal, hexadecimal (0x1.8p3), inf or nan; throws
/// std::invalid_argument for anything else.
double parse_double(const std::string& field);

/// The first `columns` fields of every row as numbers.
template <std::size_t columns>
std::vector<std::array<double, columns>> read_numbers(const std::string& fileName) {
    std::vector<std::array<double, columns>> numbers;
    for (const Row& row : read_csv(fileName)) {
        auto& last = numbers.emplace_back();
        for (std::size_t i = 0; i < columns; ++i) {
            last[i] = parse_double(row.at(i));
        }
    }
    return numbers;
}

}  // namespace vela::test

#endif
