#include "text_table.hpp"

namespace bench {

std::string fixed(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

void print_aligned(std::FILE* file, const TextTable& table) {
    for (const std::vector<std::string>& line : table) {
        std::fprintf(file, "%-54s", line.front().c_str());
        for (std::size_t i = 1; i < line.size(); ++i) {
            std::fprintf(file, "%12s", line[i].c_str());
        }
        std::fprintf(file, "\n");
    }
}

void print_markdown(std::FILE* file, const TextTable& table) {
    for (std::size_t row = 0; row < table.size(); ++row) {
        for (const std::string& cell : table[row]) {
            std::fprintf(file, "| %s ", cell.c_str());
        }
        std::fprintf(file, "|\n");
        if (row == 0) {
            std::fprintf(file, "|---");
            for (std::size_t i = 1; i < table[row].size(); ++i) {
                std::fprintf(file, "|--:");
            }
            std::fprintf(file, "|\n");
        }
    }
}

}  // namespace bench
