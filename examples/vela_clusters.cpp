// Hierarchical clustering of the rows of a CSV file: the merges, the dendrogram and the clusters.

#include "csv_columns.hpp"
#include "text.hpp"

#include <vela/nms/clustering/hierarchical_clustering.hpp>
#include <vela/nms/types/make_containers.hpp>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace vela::nms;
using Steps = std::unique_ptr<types::IReadableVector<clustering::ClusterStep>>;
using Members = std::unique_ptr<types::IReadableVector<int>>;

const char* const kUsage =
    R"(Hierarchical clustering of the rows of a CSV file.

vela_clusters FILE LABELS COLUMN...  [--linkage NAME] [--clusters COUNT]

  FILE, LABELS, COLUMN  the table, the column that names its rows, and the columns with the numbers;
                        each is standardised: its differences count in standard deviations
  --linkage NAME        average, single, complete, ward, mcquitty, median or centroid (otherwise
                        average); ward, median and centroid work with squared distances
  --clusters COUNT      how many clusters to number (otherwise 4)
)";

struct Linkage {
    std::string_view name;
    clustering::LinkageEnums code;
    bool isForSquares;
};

constexpr Linkage kLinkages[] = {
    {"average", clustering::LinkageEnums::Average, false},
    {"single", clustering::LinkageEnums::Single, false},
    {"complete", clustering::LinkageEnums::Complete, false},
    {"ward", clustering::LinkageEnums::Ward, true},
    {"mcquitty", clustering::LinkageEnums::McQuitty, false},
    {"median", clustering::LinkageEnums::Median, true},
    {"centroid", clustering::LinkageEnums::Centroid, true},
};

struct Arguments {
    std::vector<std::string> operands;  ///< file, labels, columns
    Linkage linkage = kLinkages[0];
    int clusters = 4;
};

const Linkage& find_linkage(const std::string& word) {
    for (const Linkage& linkage : kLinkages) {
        if (linkage.name == word) {
            return linkage;
        }
    }
    throw InputError("--linkage: unknown linkage " + quoted(word));
}

int parse_count(const std::string& word) {
    const double count = parse_number(word);
    if (count < 1.0 || count > 1e6 || count != std::floor(count)) {
        throw InputError("--clusters: " + quoted(word) + " is not a number of clusters");
    }
    return static_cast<int>(count);
}

Arguments parse_arguments(const std::vector<std::string>& words) {
    Arguments arguments;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (!words[i].starts_with("--")) {
            arguments.operands.push_back(words[i]);
            continue;
        }
        if (words[i] != "--linkage" && words[i] != "--clusters") {
            throw InputError("unknown option " + quoted(words[i]));
        }
        if (i + 1 == words.size()) {
            throw InputError(words[i] + ": the value is missing");
        }
        const bool isLinkage = words[i] == "--linkage";
        ++i;
        if (isLinkage) {
            arguments.linkage = find_linkage(words[i]);
        } else {
            arguments.clusters = parse_count(words[i]);
        }
    }
    if (arguments.operands.size() < 3) {
        throw InputError("a file and at least two columns are needed; see vela_clusters --help");
    }
    return arguments;
}

Steps cluster_rows(const std::vector<std::vector<double>>& columns, const Linkage& linkage) {
    std::vector<double> values;
    for (std::size_t row = 0; row < columns[0].size(); ++row) {
        for (const std::vector<double>& column : columns) {
            values.push_back(column[row]);
        }
    }
    const std::unique_ptr<types::IRectangularArray<double>> table(types::MakeRectangularArrayOver(
        values.data(), static_cast<int>(columns[0].size()), static_cast<int>(columns.size())));
    clustering::DistanceMatrix distances;
    const StatlibraryErrorCode code = clustering::CreateForClusterObservations(
        distances, *table,
        linkage.isForSquares ? clustering::DistanceEnums::SquaredPearson
                             : clustering::DistanceEnums::Pearson);
    if (code != StatlibraryErrorCode::Success) {
        throw InputError("the distances failed with code " +
                         std::to_string(static_cast<int>(code)));
    }
    return Steps(clustering::RunClustering(linkage.code, 0.0, distances));
}

std::string pad(const std::string& text, std::size_t width) {
    return text + std::string(width - std::min(width, text.size()), ' ');
}

std::string format_number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%12.4f", value);
    return text;
}

/// One line for each merge; a cluster is named by its first row.
std::string format_steps(const Steps& steps, const std::vector<std::string>& labels,
                         std::size_t width) {
    std::string text = "  Step  Clusters    Distance  Similarity  " + pad("Joined", width) + "  " +
                       pad("and", width) + "  Size\n";
    for (int i = 0; i < steps->size(); ++i) {
        const clustering::ClusterStep& step = (*steps)[i];
        char numbers[64];
        std::snprintf(numbers, sizeof numbers, "  %4d  %8d", i + 1, steps->size() - i);
        char size[16];
        std::snprintf(size, sizeof size, "%4d", step.size);
        text += numbers + format_number(step.distance) + format_number(step.similarity) + "  " +
                pad(labels[static_cast<std::size_t>(step.cluster1)], width) + "  " +
                pad(labels[static_cast<std::size_t>(step.cluster2)], width) + "  " + size + "\n";
    }
    return text;
}

/// The tree with a line for each row, distances to the right. A cluster's branch starts on the line
/// of its last drawn part, which keeps parts that are merged next to each other.
class Dendrogram {
public:
    Dendrogram(const Steps& steps, std::size_t rows) : m_lines(rows), m_canvas(rows) {
        order_rows(steps, rows);
        double largest = 0.0;
        for (int i = 0; i < steps->size(); ++i) {
            largest = std::max(largest, (*steps)[i].distance);
        }
        for (std::string& line : m_canvas) {
            line.assign(kWidth + 1, ' ');
        }
        std::vector<std::size_t> end(rows, 0);  // of the branch of the cluster at each row
        for (int i = 0; i < steps->size(); ++i) {
            const clustering::ClusterStep& step = (*steps)[i];
            const double share = largest > 0.0 ? step.distance / largest : 0.0;
            const auto at = static_cast<std::size_t>(std::lround(share * kWidth));
            draw_merge(static_cast<std::size_t>(step.cluster1),
                       static_cast<std::size_t>(step.cluster2), at, &end);
        }
    }

    const std::vector<std::size_t>& order() const { return m_order; }
    const std::string& line(std::size_t row) const { return m_canvas[m_lines[row]]; }

private:
    static constexpr int kWidth = 60;

    /// The rows so that those of every cluster stand together.
    void order_rows(const Steps& steps, std::size_t rows) {
        std::vector<std::vector<std::size_t>> parts(rows);
        for (std::size_t row = 0; row < rows; ++row) {
            parts[row] = {row};
        }
        for (int i = 0; i < steps->size(); ++i) {
            auto& first = parts[static_cast<std::size_t>((*steps)[i].cluster1)];
            auto& second = parts[static_cast<std::size_t>((*steps)[i].cluster2)];
            first.insert(first.end(), second.begin(), second.end());
            second.clear();
        }
        m_order = parts[0];
        for (std::size_t line = 0; line < rows; ++line) {
            m_lines[m_order[line]] = line;
        }
        m_branch = m_lines;
    }

    void draw_merge(std::size_t first, std::size_t second, std::size_t at,
                    std::vector<std::size_t>* end) {
        const std::size_t top = std::min(m_branch[first], m_branch[second]);
        const std::size_t bottom = std::max(m_branch[first], m_branch[second]);
        for (const std::size_t part : {first, second}) {
            for (std::size_t x = (*end)[part]; x < at; ++x) {
                char& place = m_canvas[m_branch[part]][x];
                place = place == ' ' ? '-' : place;
            }
        }
        for (std::size_t y = top; y <= bottom; ++y) {
            char& place = m_canvas[y][at];
            place = y == top || y == bottom ? '+' : place == ' ' ? '|' : place;
        }
        m_branch[first] = (top + bottom) / 2;
        m_canvas[m_branch[first]][at] = '+';
        (*end)[first] = at;
    }

    std::vector<std::size_t> m_order;   ///< rows by line
    std::vector<std::size_t> m_lines;   ///< line of each row
    std::vector<std::size_t> m_branch;  ///< line of the branch of the cluster at each row
    std::vector<std::string> m_canvas;
};

std::string make_report(const Arguments& arguments) {
    const std::vector<std::string> columnNames(arguments.operands.begin() + 2,
                                               arguments.operands.end());
    const auto columns = read_csv_columns(arguments.operands[0], columnNames);
    std::vector<std::string> labels = read_csv_labels(arguments.operands[0], arguments.operands[1]);
    std::size_t width = 6;
    for (std::string& label : labels) {
        label = printable(label, 20);
        width = std::max(width, label.size());
    }
    for (const std::vector<double>& column : columns) {
        if (column.size() != labels.size() || column.size() < 2) {
            throw InputError("the columns need a value in every row, and at least two rows");
        }
    }
    const Steps steps = cluster_rows(columns, arguments.linkage);
    if (!std::isfinite((*steps)[steps->size() - 1].distance)) {
        throw InputError("the values are too large for a distance");
    }
    const Members members(clustering::FindMembersWithNumber(*steps, arguments.clusters));
    std::string text = "Hierarchical clustering, " + std::string(arguments.linkage.name) +
                       " linkage, standardised " +
                       (arguments.linkage.isForSquares ? "squared " : "") + "distance, " +
                       printable(arguments.operands[0], arguments.operands[0].size()) + "\n\n" +
                       format_steps(steps, labels, width) + "\n  Cluster  " + pad("Row", width) +
                       "  Dendrogram, distance 0 to the left\n";
    const Dendrogram dendrogram(steps, labels.size());
    for (const std::size_t row : dendrogram.order()) {
        char number[16];
        std::snprintf(number, sizeof number, "  %7d  ", (*members)[static_cast<int>(row)]);
        std::string line = number + pad(labels[row], width) + "  " + dendrogram.line(row);
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + "\n";
    }
    return text;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
        const bool isHelp = std::find(words.begin(), words.end(), "--help") != words.end();
        const std::string answer = isHelp ? kUsage : make_report(parse_arguments(words));
        if (std::fputs(answer.c_str(), stdout) == EOF || std::fflush(stdout) != 0) {
            throw InputError("cannot write the report");
        }
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vela_clusters: %s\n", error.what());
        return 1;
    }
}
