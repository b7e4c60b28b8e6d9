#ifndef VELA_BENCH_RATIO_TABLE_HPP
#define VELA_BENCH_RATIO_TABLE_HPP

#include "rows.hpp"
#include "text_table.hpp"

#include <benchmark/benchmark.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

/// Collects the repetitions and prints, at the end, one line per row: nanoseconds of each
/// implementation and the ratio of ours to the best peer; then the ratios of each group.
class RatioTable : public benchmark::BenchmarkReporter {
public:
    RatioTable(RowOrder rows, std::vector<std::string> implementations);

    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

    TextTable rows() const;
    TextTable groups() const;
    std::string bracket() const;  ///< one line, empty where it was not measured
    static std::string units();
    static std::string footnote();

private:
    struct Cell {
        std::vector<double> nanoseconds;  ///< per call, one for each repetition
        double difference = 0.0;
    };

    const Cell* find(const std::string& row, const std::string& implementation) const;
    std::optional<double> time(const std::string& row, const std::string& implementation) const;
    std::optional<double> ratio_to_best_peer(const std::string& row) const;

    RowOrder rows_;
    std::vector<std::string> implementations_;
    std::map<std::string, Cell> cells_;  ///< by "row/implementation"
};

}  // namespace bench

#endif
