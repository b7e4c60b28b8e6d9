#ifndef EXAMPLES_CSV_COLUMNS_HPP
#define EXAMPLES_CSV_COLUMNS_HPP

#include <string>
#include <vector>

/// Reads the named columns of a CSV file, each with at least one number.
///
/// The first row names the columns. Cells are separated by commas, may be quoted ("" inside quotes
/// is one quote; a quoted cell does not go on to the next line) and may have spaces around them.
/// Blank lines and lines that begin with # are skipped; a UTF-8 byte order mark and CRLF line ends
/// are understood. A column shorter than the others ends in empty cells.
///
/// @throws InputError naming the file, and the line and the column where there is one
std::vector<std::vector<double>> read_csv_columns(const std::string& path,
                                                  const std::vector<std::string>& names);

/// Reads the text of one column of such a file, with a cell for every row.
///
/// @throws InputError as above
std::vector<std::string> read_csv_labels(const std::string& path, const std::string& name);

#endif
