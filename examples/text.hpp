#ifndef EXAMPLES_TEXT_HPP
#define EXAMPLES_TEXT_HPP

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

/// Something the user can put right; the text is one line.
struct InputError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The text with control characters replaced and what is longer cut off, so that a name or a cell
/// of any file keeps a message or a table on its line.
std::string printable(std::string_view text, std::size_t longest = 60);

/// printable(text) in single quotes.
std::string quoted(std::string_view text);

/// The text without spaces and tabs at its ends.
std::string_view trimmed(std::string_view text);

/// The finite number written in the text, whatever the locale.
/// @throws InputError when the text is anything else
double parse_number(std::string_view text);

#endif
