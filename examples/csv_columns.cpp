#include "csv_columns.hpp"

#include "text.hpp"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <fstream>
#include <ios>
#include <string_view>
#include <system_error>
#include <utility>

namespace {

// Limits for what is no table of measurements, such as a device that never ends.
constexpr std::size_t kLongestLine = 1 << 20;
constexpr std::size_t kMostValues = 50'000'000;

/// The rows of a file, one at a time.
class CsvRows {
public:
    explicit CsvRows(const std::string& path) : buffer_(kLongestLine + 1) {
        errno = 0;
        file_.open(path, std::ios::binary);
        if (!file_) {
            throw InputError("cannot open the file: " + std::generic_category().message(errno));
        }
    }

    /// Moves to the next row that is neither blank nor a comment; false at the end of the file.
    bool next() {
        std::string_view line;
        while (read_line(&line)) {
            const std::string_view text = trimmed(line);
            if (!text.empty() && text.front() != '#') {
                split(line);
                return true;
            }
        }
        return false;
    }

    const std::vector<std::string>& cells() const { return cells_; }
    std::size_t line_number() const { return lineNumber_; }

    [[noreturn]] void fail(const std::string& what) const {
        throw InputError("line " + std::to_string(lineNumber_) + what);
    }

private:
    bool read_line(std::string_view* line) {
        ++lineNumber_;
        file_.getline(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
        auto length = static_cast<std::size_t>(file_.gcount());
        if (file_.bad()) {
            throw InputError("cannot read the file: " + std::generic_category().message(errno));
        }
        if (file_.eof()) {
            if (length == 0) {
                return false;
            }
        } else if (file_.fail()) {
            fail(" is too long for a row of a table");
        } else {
            --length;  // the line feed is counted
        }
        *line = {buffer_.data(), length};
        if (line->find('\0') != std::string_view::npos) {
            fail(" holds a zero byte: this is not a plain text file");
        }
        if (lineNumber_ == 1 && line->starts_with("\xEF\xBB\xBF")) {
            line->remove_prefix(3);
        }
        if (line->ends_with('\r')) {
            line->remove_suffix(1);
        }
        return true;
    }

    void split(std::string_view line) {
        cells_.clear();
        for (;;) {
            line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
            cells_.push_back(line.starts_with('"') ? take_quoted(&line) : take_plain(&line));
            if (line.empty()) {
                return;
            }
            line.remove_prefix(1);  // the comma
        }
    }

    static std::string take_plain(std::string_view* line) {
        const std::size_t end = std::min(line->find(','), line->size());
        const std::string_view cell = trimmed(line->substr(0, end));
        line->remove_prefix(end);
        return std::string(cell);
    }

    std::string take_quoted(std::string_view* line) const {
        std::string cell;
        std::size_t at = 1;
        for (;; ++at) {
            if (at >= line->size()) {
                fail(": a quoted cell is not closed");
            }
            if ((*line)[at] == '"') {
                if (line->substr(at + 1, 1) != "\"") {
                    break;
                }
                ++at;
            }
            cell += (*line)[at];
        }
        line->remove_prefix(at + 1);
        line->remove_prefix(std::min(line->find_first_not_of(" \t"), line->size()));
        if (!line->empty() && line->front() != ',') {
            fail(": text after a quoted cell");
        }
        return std::string(trimmed(cell));
    }

    std::ifstream file_;
    std::vector<char> buffer_;
    std::vector<std::string> cells_;
    std::size_t lineNumber_ = 0;
};

/// One column being read: where it stands in the rows, and what it holds so far.
struct Column {
    std::string name;
    std::size_t index;
    std::vector<double> values{};
    bool ended = false;  // an empty cell was seen
};

Column find_column(const CsvRows& rows, const std::string& name) {
    const auto& cells = rows.cells();
    const auto found = std::find(cells.begin(), cells.end(), name);
    if (found == cells.end()) {
        std::string header = cells[0];
        for (std::size_t i = 1; i < cells.size(); ++i) {
            header += ", " + cells[i];
        }
        rows.fail(": no column is named " + quoted(name) + "; the header is " + quoted(header));
    }
    if (std::find(found + 1, cells.end(), name) != cells.end()) {
        rows.fail(": more than one column is named " + quoted(name));
    }
    return {name, static_cast<std::size_t>(found - cells.begin())};
}

void add_cell(const CsvRows& rows, Column* column) {
    const std::string& cell = rows.cells()[column->index];
    const std::string place = ", column " + quoted(column->name) + ": ";
    if (cell.empty()) {
        column->ended = true;
        return;
    }
    if (column->ended) {
        rows.fail(place + "a value after an empty cell");
    }
    if (column->values.size() == kMostValues) {
        rows.fail(place + "more than " + std::to_string(kMostValues) + " values");
    }
    try {
        column->values.push_back(parse_number(cell));
    } catch (const InputError& error) {
        rows.fail(place + error.what());
    }
}

/// Moves to the next row, which has to be as wide as the header; false at the end of the file.
bool next_row(CsvRows* rows, std::size_t width) {
    if (!rows->next()) {
        return false;
    }
    if (rows->cells().size() != width) {
        rows->fail(": the number of cells is " + std::to_string(rows->cells().size()) + ", but " +
                   std::to_string(width) + " in the header");
    }
    return true;
}

void require_header(CsvRows* rows) {
    if (!rows->next()) {
        throw InputError("the file has no header row");
    }
}

std::vector<Column> read_columns(const std::string& path, const std::vector<std::string>& names) {
    CsvRows rows(path);
    require_header(&rows);
    std::vector<Column> columns;
    columns.reserve(names.size());
    for (const std::string& name : names) {
        columns.push_back(find_column(rows, name));
    }
    const std::size_t width = rows.cells().size();
    while (next_row(&rows, width)) {
        for (Column& column : columns) {
            add_cell(rows, &column);
        }
    }
    return columns;
}

}  // namespace

std::vector<std::vector<double>> read_csv_columns(const std::string& path,
                                                  const std::vector<std::string>& names) {
    std::vector<std::vector<double>> values;
    try {
        for (Column& column : read_columns(path, names)) {
            if (column.values.empty()) {
                throw InputError("column " + quoted(column.name) + " has no values");
            }
            values.push_back(std::move(column.values));
        }
    } catch (const InputError& error) {
        throw InputError(printable(path, path.size()) + ": " + error.what());
    }
    return values;
}

std::vector<std::string> read_csv_labels(const std::string& path, const std::string& name) {
    std::vector<std::string> labels;
    try {
        CsvRows rows(path);
        require_header(&rows);
        const std::size_t index = find_column(rows, name).index;
        const std::size_t width = rows.cells().size();
        while (next_row(&rows, width)) {
            labels.push_back(rows.cells()[index]);
        }
    } catch (const InputError& error) {
        throw InputError(printable(path, path.size()) + ": " + error.what());
    }
    return labels;
}
