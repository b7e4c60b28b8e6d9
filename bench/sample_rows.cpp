// Procedures on data, from ten observations to a million.

#include "functions.hpp"
#include "rows.hpp"

#include <memory>
#include <random>

namespace bench {
namespace {

struct Procedure {
    const char* function;
    std::vector<std::size_t> sizes;
};

const Procedure kProcedures[] = {
    {"Sum", {1'000, 1'000'000}},
    {"MeanAndVariance", {10, 100, 1'000, 10'000, 100'000, 1'000'000}},
    {"SkewnessAndKurtosis", {10, 1'000, 10'000}},
    {"Covariance", {20, 2'000, 200'000, 2'000'000}},
    {"TwoSampleT", {2'000, 2'000'000}},
    {"OneSampleT", {1'000, 1'000'000}},
};

/// A bell-shaped sample around 100, the same on every platform.
std::shared_ptr<const std::vector<double>> observations(std::size_t n) {
    std::mt19937_64 bits(20240229);
    auto values = std::make_shared<std::vector<double>>(n);
    for (double& value : *values) {
        double sum = 0.0;
        for (int i = 0; i < 4; ++i) {
            sum += static_cast<double>(bits() >> 11U) * 0x1p-53;
        }
        value = 98.0 + sum;
    }
    return values;
}

void add_row(RowOrder& rows, const char* function, std::size_t n) {
    const auto x = observations(n);
    const double expected = ours().find_sample(function)->run(x->data(), n);
    rows.push_back(function + std::string(", ") + std::to_string(n) + " values");

    const auto add_benchmark = [&](const Implementation& implementation) {
        const SampleFunction* sample = implementation.find_sample(function);
        if (sample == nullptr) {
            return;
        }
        const double difference = relative_difference(sample->run(x->data(), n), expected);
        const auto body = [=, run = sample->run](benchmark::State& state) {
            for (auto _ : state) {
                benchmark::DoNotOptimize(run(x->data(), n));
            }
            state.counters[kCallsCounter] = 1;
            state.counters[kDifferenceCounter] = difference;
        };
        benchmark::RegisterBenchmark((rows.back() + "/" + implementation.name).c_str(), body);
    };
    add_benchmark(ours());
    for (const Implementation& peer : peers()) {
        add_benchmark(peer);
    }
}

}  // namespace

void add_sample_rows(RowOrder& rows) {
    for (const Procedure& procedure : kProcedures) {
        for (const std::size_t n : procedure.sizes) {
            add_row(rows, procedure.function, n);
        }
    }
}

}  // namespace bench
