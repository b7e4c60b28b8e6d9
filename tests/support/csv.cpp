#include "support/csv.hpp"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace vela::test {

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t end = 0; end != std::string::npos; start = end + 1) {
        end = text.find(separator, start);
        parts.push_back(text.substr(start, end - start));
    }
    return parts;
}

std::vector<Row> read_csv(const std::string& fileName) {
    std::ifstream file(std::string(VELA_TEST_DATA_DIR "/") + fileName);
    std::vector<Row> rows;
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line.front() != '#') {
            rows.push_back(split(line, ','));
        }
    }
    if (rows.empty()) {
        throw std::runtime_error("no rows in " + fileName);
    }
    return rows;
}

double parse_double(const std::string& field) {
    char* end = nullptr;
    const double value = std::strtod(field.c_str(), &end);
    if (field.empty() || *end != '\0') {
        throw std::invalid_argument("not a number: '" + field + "'");
    }
    return value;
}

}  // namespace vela::test
