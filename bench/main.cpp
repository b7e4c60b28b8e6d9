// Runs the rows and prints the table of ratios. Every Google Benchmark option works; later options
// win over the defaults set here. A first argument --page=FILE asks for the page of results as
// well.

#include "functions.hpp"
#include "performance_page.hpp"
#include "ratio_table.hpp"
#include "rows.hpp"
#include "vela/floating_point.hpp"

#include <benchmark/benchmark.h>

#include <string>
#include <string_view>
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

/// Takes the option out of the arguments; the others are Google Benchmark's.
std::string take_page(std::vector<char*>* arguments) {
    constexpr std::string_view kOption = "--page=";
    if (arguments->size() < 2 || !std::string_view((*arguments)[1]).starts_with(kOption)) {
        return "";
    }
    std::string page = (*arguments)[1] + kOption.size();
    arguments->erase(arguments->begin() + 1);
    return page;
}

bool measures_everything() {
    const std::string filter = benchmark::GetBenchmarkFilter();
    return filter.empty() || filter == "." || filter == "all";
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
    // Interleaving spreads a slow moment of the machine over all rows and implementations.
    std::string defaults[] = {"--benchmark_repetitions=5", "--benchmark_min_time=0.004",
                              "--benchmark_enable_random_interleaving=true"};
    std::vector<char*> arguments(argv, argv + argc);
    const std::string page = bench::take_page(&arguments);
    for (std::string& option : defaults) {
        arguments.insert(arguments.begin() + 1, option.data());
    }
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 1;
    }

    vela::RegisterKroSigfpeHandler();
    bench::RowOrder rows = bench::add_rows();
    bench::RatioTable table(std::move(rows), bench::implementation_names());
    benchmark::RunSpecifiedBenchmarks(&table);
    if (!page.empty() && bench::measures_everything()) {
        bench::write_performance_page(page, table);
    }
    benchmark::Shutdown();
    return 0;
}
