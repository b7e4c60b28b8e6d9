// Order statistics against the standard library's sort, on the same samples and in the same run.
// Every call gets the next of several samples: with a single one, a branch predictor learns the
// order of up to a thousand values by heart, and the library sort looks five times faster than on
// data that it has not seen.

#include "functions.hpp"
#include "rows.hpp"
#include "vela/v1/order_statistics.hpp"
#include "vela/v1/summaries.hpp"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numeric>
#include <random>

namespace bench {
namespace {

using Sample = std::vector<double>;
using Positions = std::vector<unsigned int>;

/// Values handled by one round of samples; a sample larger than that is alone.
constexpr std::size_t kRound = 100'000;
constexpr unsigned int kPercentiles = 99;

std::vector<double> percentiles() {
    std::vector<double> p;
    for (unsigned int i = 1; i <= kPercentiles; ++i) {
        p.push_back(i / 100.0);
    }
    return p;
}

/// Quantile of definition 6 in a sorted sample.
double quantile(const Sample& sorted, double p) {
    const auto n = static_cast<double>(sorted.size());
    const double h = std::clamp(n * p + p, 1.0, n);
    const auto j = static_cast<std::size_t>(h);
    const double low = sorted[j - 1];
    return j == sorted.size() ? low : low + (h - std::floor(h)) * (sorted[j] - low);
}

Sample sorted_copy(const Sample& x) {
    Sample sorted(x);
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

Positions sorted_positions(const Sample& x) {
    Positions order(x.size());
    std::iota(order.begin(), order.end(), 0U);
    std::sort(order.begin(), order.end(),
              [&](unsigned int a, unsigned int b) { return x[a] < x[b]; });
    return order;
}

unsigned int size_of(const Sample& x) { return static_cast<unsigned int>(x.size()); }

double our_percentiles(const Sample& x) {
    static const std::vector<double> p = percentiles();
    double out[kPercentiles];
    vela::v1::GetSampleQuantiles(x.data(), size_of(x), 6, out, p.data(), kPercentiles);
    return out[9] + out[49];
}
double library_percentiles(const Sample& x) {
    static const std::vector<double> p = percentiles();
    const Sample sorted = sorted_copy(x);
    double out[kPercentiles];
    std::transform(p.begin(), p.end(), out, [&](double at) { return quantile(sorted, at); });
    return out[9] + out[49];
}

double our_five_numbers(const Sample& x) {
    vela::v1::FiveNumberSummary five;
    vela::v1::GetKroFiveNumberSummary(&five, x.data(), size_of(x));
    return five.minimum + five.firstQuartile + five.median + five.thirdQuartile + five.maximum;
}
double library_five_numbers(const Sample& x) {
    const Sample sorted = sorted_copy(x);
    return sorted.front() + quantile(sorted, 0.25) + quantile(sorted, 0.5) +
           quantile(sorted, 0.75) + sorted.back();
}

double our_order(const Sample& x) {
    Positions order(x.size());
    vela::v1::GetOrder(x.data(), size_of(x), order.data());
    return order[x.size() / 2];
}
double library_order(const Sample& x) { return sorted_positions(x)[x.size() / 2]; }

double our_ranks(const Sample& x) {
    Sample ranks(x.size());
    vela::v1::GetRank(x.data(), size_of(x), ranks.data());
    return ranks[x.size() / 2];
}
double library_ranks(const Sample& x) {
    const Positions order = sorted_positions(x);
    Sample ranks(x.size());
    for (std::size_t first = 0, end = 1; first < x.size(); first = end++) {
        while (end < x.size() && x[order[end]] == x[order[first]]) {
            ++end;
        }
        for (std::size_t i = first; i < end; ++i) {
            ranks[order[i]] = static_cast<double>(first + end + 1) / 2.0;
        }
    }
    return ranks[x.size() / 2];
}

double our_mode(const Sample& x) {
    double mode = 0.0;
    unsigned int number = 0;
    unsigned int frequency = 0;
    vela::v1::GetMode(x.data(), size_of(x), &mode, 1, &number, &frequency);
    return frequency;
}
double library_mode(const Sample& x) {
    const Sample sorted = sorted_copy(x);
    std::size_t best = 1;
    for (std::size_t first = 0, end = 1; first < sorted.size(); first = end++) {
        while (end < sorted.size() && sorted[end] == sorted[first]) {
            ++end;
        }
        best = std::max(best, end - first);
    }
    return best > 1 ? static_cast<double>(best) : 0.0;
}

struct Procedure {
    const char* name;
    double (*ours)(const Sample& x);
    double (*library)(const Sample& x);
};

const Procedure kProcedures[] = {
    {"Percentiles", our_percentiles, library_percentiles},
    {"FiveNumbers", our_five_numbers, library_five_numbers},
    {"Order", our_order, library_order},
    {"Ranks", our_ranks, library_ranks},
    {"Mode", our_mode, library_mode},
};

using Samples = std::shared_ptr<const std::vector<Sample>>;

/// Normal values, of which some agree once they are rounded to `step` (0: not at all).
Samples normal_samples(std::size_t n, double step) {
    std::mt19937_64 bits(20240229);
    std::normal_distribution<double> normal;
    auto samples = std::make_shared<std::vector<Sample>>(std::max<std::size_t>(1, kRound / n));
    for (Sample& sample : *samples) {
        for (std::size_t i = 0; i < n; ++i) {
            const double value = normal(bits);
            sample.push_back(step > 0.0 ? std::round(value / step) * step : value);
        }
    }
    return samples;
}

void add_benchmark(const std::string& row, const char* implementation, const Samples& samples,
                   double (*run)(const Sample&), double difference) {
    const auto body = [=](benchmark::State& state) {
        std::size_t next = 0;
        for (auto _ : state) {
            benchmark::DoNotOptimize(run((*samples)[next]));
            next = next + 1 == samples->size() ? 0 : next + 1;
        }
        state.counters[kCallsCounter] = 1;
        state.counters[kDifferenceCounter] = difference;
    };
    benchmark::RegisterBenchmark((row + "/" + implementation).c_str(), body);
}

}  // namespace

void add_order_rows(RowOrder& rows) {
    for (const double step : {0.0, 0.01}) {
        for (const std::size_t n : {10U, 100U, 1'000U, 10'000U, 250'000U, 1'000'000U, 4'000'000U}) {
            const Samples samples = normal_samples(n, step);
            for (const Procedure& procedure : kProcedures) {
                const std::string row = procedure.name + std::string(", ") + std::to_string(n) +
                                        (step > 0.0 ? " values, tied" : " values");
                rows.push_back(row);
                const double difference = relative_difference(procedure.ours(samples->front()),
                                                              procedure.library(samples->front()));
                add_benchmark(row, ours().name, samples, procedure.ours, 0.0);
                add_benchmark(row, "std", samples, procedure.library, difference);
            }
        }
    }
}

}  // namespace bench
