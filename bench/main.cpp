// Runs the rows and prints the table of ratios. Every Google Benchmark option works; later options
// win over the defaults set here.

#include "functions.hpp"
#include "ratio_table.hpp"
#include "rows.hpp"
#include "vela/floating_point.hpp"

#include <benchmark/benchmark.h>

#include <string>
#include <utility>
#include <vector>

namespace bench {
namespace {

RowOrder add_rows() {
    RowOrder rows;
    add_bracket_rows(rows);
    add_distribution_rows(rows);
    add_sample_rows(rows);
    add_order_rows(rows);
    return rows;
}

std::vector<std::string> implementation_names() {
    std::vector<std::string> names = {ours().name};
    for (const Implementation& peer : peers()) {
        names.emplace_back(peer.name);
    }
    names.emplace_back("std");  // the standard library, in the rows of order statistics
    return names;
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
    // Interleaving spreads a slow moment of the machine over all rows and implementations.
    std::string defaults[] = {"--benchmark_repetitions=5", "--benchmark_min_time=0.004",
                              "--benchmark_enable_random_interleaving=true"};
    std::vector<char*> arguments = {argv[0]};
    for (std::string& option : defaults) {
        arguments.push_back(option.data());
    }
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 1;
    }

    vela::RegisterKroSigfpeHandler();
    bench::RowOrder rows = bench::add_rows();
    bench::RatioTable table(std::move(rows), bench::implementation_names());
    benchmark::RunSpecifiedBenchmarks(&table);
    benchmark::Shutdown();
    return 0;
}
