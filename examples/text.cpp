#include "text.hpp"

#include <charconv>
#include <cmath>
#include <system_error>

std::string printable(std::string_view text, std::size_t longest) {
    std::string line(text.substr(0, longest));
    if (text.size() > longest) {
        while (!line.empty() && (line.back() & 0xC0) == 0x80) {
            line.pop_back();
        }
        if (!line.empty()) {
            line.pop_back();  // with the above: no half of a UTF-8 character
        }
        line += "...";
    }
    for (char& c : line) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
            c = '?';
        }
    }
    return line;
}

std::string quoted(std::string_view text) { return '\'' + printable(text) + '\''; }

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

double parse_number(std::string_view text) {
    std::string_view digits = text;
    if (digits.size() > 1 && digits[0] == '+' && digits[1] != '-') {
        digits.remove_prefix(1);  // from_chars takes no plus sign
    }
    const char* const end = digits.data() + digits.size();
    double value = 0.0;
    const auto [rest, error] = std::from_chars(digits.data(), end, value);
    if (error == std::errc::result_out_of_range && rest == end) {
        throw InputError(quoted(text) + " is out of range");
    }
    if (error != std::errc() || rest != end) {
        throw InputError(quoted(text) + " is not a number");
    }
    if (!std::isfinite(value)) {
        throw InputError(quoted(text) + " is not a finite number");
    }
    return value;
}
