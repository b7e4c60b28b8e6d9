// Cumulative functions and quantiles over the regions of a distribution. A region is a range of
// lower-tail probabilities, so that it means the same in every family; the points of a cumulative
// function are the quantiles of those probabilities.

#include "functions.hpp"
#include "rows.hpp"

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <utility>

namespace bench {
namespace {

constexpr int kPoints = 256;

/// A new family, or new parameters of one, is a line here; its functions are found by the names
/// <family>Cdf and <family>InvCdf.
struct Family {
    const char* name;
    const char* label;
    Parameters parameters;
};

// Noncentral t with a negative noncentrality is, by symmetry, the upper tail.
constexpr Family kFamilies[] = {
    {"Normal", "", {0.0, 1.0}},
    {"T", "df 0.5", {0.5}},
    {"T", "df 3", {3.0}},
    {"T", "df 30", {30.0}},
    {"T", "df 1e4", {1e4}},
    {"NoncentralT", "df 3 nc 2", {3.0, 2.0}},
    {"NoncentralT", "df 3 nc -2", {3.0, -2.0}},
    {"NoncentralT", "df 30 nc 10", {30.0, 10.0}},
};

struct Region {
    const char* name;
    double low;
    double high;
    bool logarithmic;

    double at(double fraction) const {
        return logarithmic ? low * std::pow(high / low, fraction) : low + (high - low) * fraction;
    }
};

constexpr Region kRegions[] = {
    {"centre", 0.05, 0.95, false},
    {"tail", 1e-10, 1e-2, true},
    {"far tail", 1e-100, 1e-20, true},
};

using Values = std::vector<double>;

/// Unordered, so that branches are no easier to predict than in use.
Values probabilities(const Region& region) {
    std::mt19937_64 bits(20240229);
    Values values(kPoints);
    for (double& value : values) {
        value = region.at(static_cast<double>(bits() >> 11U) * 0x1p-53);
    }
    return values;
}

Values evaluate(const PointFunction& function, const Values& x, const Parameters& parameters) {
    Values out(x.size());
    function.array(out.data(), x.data(), x.size(), parameters);
    return out;
}

double largest_relative_difference(const Values& a, const Values& b) {
    double largest = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        largest = std::max(largest, relative_difference(a[i], b[i]));
    }
    return largest;
}

void measure_scalar(benchmark::State& state, const PointFunction& function, const Values& x,
                    const Parameters& parameters) {
    for (auto _ : state) {
        for (const double point : x) {
            benchmark::DoNotOptimize(function.scalar(point, parameters));
        }
    }
}

void measure_array(benchmark::State& state, const PointFunction& function, const Values& x,
                   const Parameters& parameters) {
    Values out(x.size());
    for (auto _ : state) {
        function.array(out.data(), x.data(), x.size(), parameters);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
}

using Measure = decltype(&measure_scalar);

/// What the benchmarks of a row have in common: same points, same parameters.
struct Row {
    std::string function;
    std::string details;
    Parameters parameters;
    std::shared_ptr<const Values> x;
    Values expected;
};

void add_benchmark(const std::string& row, const Implementation& implementation, Measure measure,
                   const Row& data) {
    const PointFunction* function = implementation.find_point(data.function);
    if (function == nullptr) {
        return;
    }
    const double difference =
        largest_relative_difference(evaluate(*function, *data.x, data.parameters), data.expected);
    const auto body = [=, x = data.x, parameters = data.parameters](benchmark::State& state) {
        measure(state, *function, *x, parameters);
        state.counters[kCallsCounter] = static_cast<double>(x->size());
        state.counters[kDifferenceCounter] = difference;
    };
    benchmark::RegisterBenchmark((row + "/" + implementation.name).c_str(), body);
}

void add_row(RowOrder& rows, const Row& data) {
    constexpr std::pair<const char*, Measure> kForms[] = {{" scalar", measure_scalar},
                                                          {" array", measure_array}};
    for (const auto& [form, measure] : kForms) {
        const std::string row = data.function + form + data.details;
        rows.push_back(row);
        add_benchmark(row, ours(), measure, data);
        for (const Implementation& peer : peers()) {
            add_benchmark(row, peer, measure, data);
        }
    }
}

std::string details(const Family& family, const Region& region) {
    std::string text = ", ";
    text += family.label;
    text += *family.label == '\0' ? "" : " ";
    text += region.name;
    return text;
}

void add_rows(RowOrder& rows, const Family& family, bool isQuantile) {
    const std::string quantile = family.name + std::string("InvCdf");
    const std::string function = isQuantile ? quantile : family.name + std::string("Cdf");
    for (const Region& region : kRegions) {
        Values x = probabilities(region);
        if (!isQuantile) {
            x = evaluate(*ours().find_point(quantile), x, family.parameters);
        }
        Values expected = evaluate(*ours().find_point(function), x, family.parameters);
        add_row(rows, {function, details(family, region), family.parameters,
                       std::make_shared<const Values>(std::move(x)), std::move(expected)});
    }
}

/// Without registration the traps stay masked and the flags are tested after each kernel.
void add_unregistered_row(RowOrder& rows) {
    const Parameters standard = {0.0, 1.0};
    const Values x =
        evaluate(*ours().find_point("NormalInvCdf"), probabilities(kRegions[0]), standard);
    rows.emplace_back("NormalCdf scalar unregistered thread, centre");
    benchmark::RegisterBenchmark((rows.back() + "/vela").c_str(), [=](benchmark::State& state) {
        on_unregistered_thread(
            [&] { measure_scalar(state, *ours().find_point("NormalCdf"), x, standard); });
        state.counters[kCallsCounter] = kPoints;
    });
}

}  // namespace

void add_distribution_rows(RowOrder& rows) {
    for (const bool isQuantile : {false, true}) {
        for (const Family& family : kFamilies) {
            add_rows(rows, family, isQuantile);
        }
    }
    add_unregistered_row(rows);
}

}  // namespace bench
