#include "ratio_table.hpp"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace bench {
namespace {

// A peer this far from us computes something else, or has run out of digits: its speed says little,
// so it is the best peer only where no other is.
constexpr double kSuspiciousDifference = 1e-6;

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t half = values.size() / 2;
    return values.size() % 2 == 1 ? values[half] : 0.5 * (values[half - 1] + values[half]);
}

std::string group_of(const std::string& row) { return row.substr(0, row.find(',')); }

}  // namespace

RatioTable::RatioTable(RowOrder rows, std::vector<std::string> implementations)
    : rows_(std::move(rows)), implementations_(std::move(implementations)) {}

bool RatioTable::ReportContext(const Context& context) {
    PrintBasicContext(&GetErrorStream(), context);
    return true;
}

void RatioTable::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration || run.error_occurred) {
            continue;
        }
        // Processor time, not elapsed time: what else runs on the machine counts less.
        Cell& cell = cells_[run.run_name.function_name];
        cell.nanoseconds.push_back(run.GetAdjustedCPUTime() / run.counters.at(kCallsCounter).value);
        const auto difference = run.counters.find(kDifferenceCounter);
        cell.difference = difference == run.counters.end() ? 0.0 : difference->second.value;
    }
}

void RatioTable::Finalize() {
    std::erase_if(rows_, [this](const std::string& row) {
        return std::none_of(implementations_.begin(), implementations_.end(),
                            [&](const std::string& name) { return find(row, name) != nullptr; });
    });
    std::printf("\n%s\n", units().c_str());
    print_aligned(stdout, rows());
    std::printf("%s\n\n", footnote().c_str());
    print_aligned(stdout, groups());
    std::printf("\n%s", bracket().c_str());
}

std::string RatioTable::units() { return "Nanoseconds per call; per element in array rows."; }

std::string RatioTable::footnote() {
    return "`*` differs from our result by more than 1e-6 somewhere in the row.";
}

const RatioTable::Cell* RatioTable::find(const std::string& row,
                                         const std::string& implementation) const {
    const auto cell = cells_.find(row + "/" + implementation);
    return cell == cells_.end() ? nullptr : &cell->second;
}

std::optional<double> RatioTable::time(const std::string& row,
                                       const std::string& implementation) const {
    const Cell* cell = find(row, implementation);
    return cell == nullptr ? std::nullopt : std::optional(median(cell->nanoseconds));
}

std::optional<double> RatioTable::ratio_to_best_peer(const std::string& row) const {
    std::optional<std::pair<bool, double>> best;  // suspicious peers sort behind the others
    for (std::size_t i = 1; i < implementations_.size(); ++i) {
        if (const Cell* cell = find(row, implementations_[i])) {
            const std::pair candidate(!(cell->difference <= kSuspiciousDifference),
                                      median(cell->nanoseconds));
            best = best ? std::min(*best, candidate) : candidate;
        }
    }
    const std::optional<double> ours = time(row, implementations_.front());
    return best && ours ? std::optional(*ours / best->second) : std::nullopt;
}

TextTable RatioTable::rows() const {
    TextTable table = {{"row"}};
    for (const std::string& name : implementations_) {
        table[0].push_back(name + " ");  // over the stars
    }
    table[0].emplace_back("ratio");
    for (const std::string& row : rows_) {
        std::vector<std::string> line = {row};
        for (const std::string& name : implementations_) {
            const Cell* cell = find(row, name);
            const bool suspicious = cell != nullptr && !(cell->difference <= kSuspiciousDifference);
            line.push_back(cell == nullptr
                               ? "-"
                               : fixed(median(cell->nanoseconds), 1) + (suspicious ? "*" : " "));
        }
        const auto ratio = ratio_to_best_peer(row);
        line.push_back(ratio ? fixed(*ratio, 2) : "-");
        table.push_back(std::move(line));
    }
    return table;
}

TextTable RatioTable::groups() const {
    std::map<std::string, std::vector<double>> groups;
    for (const std::string& row : rows_) {
        if (const auto ratio = ratio_to_best_peer(row)) {
            groups[group_of(row)].push_back(*ratio);
        }
    }
    TextTable table = {{"ratio to the best peer", "median", "worst"}};
    for (const auto& [group, ratios] : groups) {
        table.push_back({group, fixed(median(ratios), 2),
                         fixed(*std::max_element(ratios.begin(), ratios.end()), 2)});
    }
    return table;
}

std::string RatioTable::bracket() const {
    const std::string& ours = implementations_.front();
    const auto plain = time(kPlainCallRow, ours);
    const auto registered = time(kRegisteredCallRow, ours);
    const auto unregistered = time(kUnregisteredCallRow, ours);
    if (!plain || !registered || !unregistered) {
        return "";
    }
    return "Bracket: " + fixed(*registered - *plain, 1) + " ns on a registered thread, " +
           fixed(*unregistered - *plain, 1) + " ns on another.\n";
}

}  // namespace bench
