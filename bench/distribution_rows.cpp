// Densities, cumulative functions and quantiles over the regions of a distribution. A region is a
// range of lower-tail probabilities, so that it means the same in every family; the points of a
// density or a cumulative function are the quantiles of those probabilities.

#include "functions.hpp"
#include "rows.hpp"

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <utility>

namespace bench {
namespace {

constexpr int kPoints = 256;

/// A new family, or new parameters of one, is a line here; its functions are found by the names
/// <family>Cdf, <family>InvCdf and, where there is one, <family>Pdf.
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
    {"Beta", "0.5 0.5", {0.5, 0.5}},
    {"Beta", "2 3", {2.0, 3.0}},
    {"Beta", "30 40", {30.0, 40.0}},
    {"Beta", "1e3 2e3", {1e3, 2e3}},
    {"F", "df 3 10", {3.0, 10.0}},
    {"F", "df 30 1e4", {30.0, 1e4}},
    {"NoncentralF", "df 3 10 nc 2", {3.0, 10.0, 2.0}},
    {"NoncentralF", "df 30 100 nc 50", {30.0, 100.0, 50.0}},
    {"Gamma", "shape 0.5", {0.5, 2.0}},
    {"Gamma", "shape 3", {3.0, 2.0}},
    {"Gamma", "shape 30", {30.0, 2.0}},
    {"Gamma", "shape 1e4", {1e4, 2.0}},
    {"ChiSq", "df 1", {1.0}},
    {"ChiSq", "df 6", {6.0}},
    {"ChiSq", "df 60", {60.0}},
    {"ChiSq", "df 1e4", {1e4}},
    {"NoncentralChiSq", "df 5 nc 2", {5.0, 2.0}},
    {"NoncentralChiSq", "df 30 nc 50", {30.0, 50.0}},
    {"Binomial", "n 20 p 0.5", {20.0, 0.5}},
    {"Binomial", "n 200 p 0.1", {200.0, 0.1}},
    {"Binomial", "n 1e4 p 0.01", {1e4, 0.01}},
    {"NegBinomial", "p 0.4 r 3", {0.4, 3.0}},
    {"NegBinomial", "p 0.05 r 60", {0.05, 60.0}},
    {"Poisson", "mean 3", {3.0}},
    {"Poisson", "mean 100", {100.0}},
    {"Poisson", "mean 1e4", {1e4}},
    {"Hypergeometric", "50 20 15", {50.0, 20.0, 15.0}},
    {"Hypergeometric", "1e4 3e3 500", {1e4, 3e3, 500.0}},
    {"Geometric", "p 0.001", {0.001}},
    {"Weibull", "shape 2", {2.0, 1.5}},
    {"LogNormal", "", {0.0, 1.0}},
    {"Logistic", "", {0.0, 1.0}},
    {"Cauchy", "", {0.0, 1.0}},
    {"Laplace", "", {0.0, 1.0}},
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
    std::shared_ptr<const Values> expected;
};

void add_benchmark(const std::string& row, const Implementation& implementation, Measure measure,
                   const Row& data) {
    const PointFunction* function = implementation.find_point(data.function);
    if (function == nullptr) {
        return;
    }
    // The difference waits for the first repetition: a peer can take a second over one row, and
    // most rows may be filtered out.
    auto body = [=, difference = std::optional<double>()](benchmark::State& state) mutable {
        if (!difference) {
            difference = largest_relative_difference(evaluate(*function, *data.x, data.parameters),
                                                     *data.expected);
        }
        measure(state, *function, *data.x, data.parameters);
        state.counters[kCallsCounter] = static_cast<double>(data.x->size());
        state.counters[kDifferenceCounter] = *difference;
    };
    benchmark::RegisterBenchmark((row + "/" + implementation.name).c_str(), body);
}

struct Form {
    const char* name;
    Measure measure;
};

constexpr Form kScalar = {" scalar", measure_scalar};
constexpr Form kArray = {" array", measure_array};

void add_row(RowOrder& rows, const Form& form, const Row& data) {
    const std::string row = data.function + form.name + data.details;
    rows.push_back(row);
    add_benchmark(row, ours(), form.measure, data);
    for (const Implementation& peer : peers()) {
        add_benchmark(row, peer, form.measure, data);
    }
}

std::string details(const Family& family, const Region& region) {
    std::string text = ", ";
    text += family.label;
    text += *family.label == '\0' ? "" : " ";
    text += region.name;
    return text;
}

/// The row of a function at points x, without its form.
Row row_of(const Family& family, const char* suffix, const Region& region, Values x) {
    const std::string function = std::string(family.name) + suffix;
    Values expected = evaluate(*ours().find_point(function), x, family.parameters);
    return {function, details(family, region), family.parameters,
            std::make_shared<const Values>(std::move(x)),
            std::make_shared<const Values>(std::move(expected))};
}

Values quantiles(const Family& family, const Region& region) {
    const std::string function = std::string(family.name) + "InvCdf";
    return evaluate(*ours().find_point(function), probabilities(region), family.parameters);
}

/// Far in the lower tail a count may have no value but 0; there is nothing to measure.
bool is_one_value(const Values& x) {
    return std::adjacent_find(x.begin(), x.end(), std::not_equal_to<>()) == x.end();
}

void add_both_forms(RowOrder& rows, const Row& row) {
    add_row(rows, kScalar, row);
    add_row(rows, kArray, row);
}

void add_cumulative_rows(RowOrder& rows, const Family& family) {
    for (const Region& region : kRegions) {
        Values x = quantiles(family, region);
        if (!is_one_value(x)) {
            add_both_forms(rows, row_of(family, "Cdf", region, std::move(x)));
        }
    }
}

void add_quantile_rows(RowOrder& rows, const Family& family) {
    for (const Region& region : kRegions) {
        const Row row = row_of(family, "InvCdf", region, probabilities(region));
        if (!is_one_value(*row.expected)) {
            add_both_forms(rows, row);
        }
    }
}

/// A density costs much the same everywhere, and no more in an array.
void add_density_row(RowOrder& rows, const Family& family) {
    if (ours().find_point(std::string(family.name) + "Pdf") != nullptr) {
        const Region& centre = kRegions[0];
        add_row(rows, kScalar, row_of(family, "Pdf", centre, quantiles(family, centre)));
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
    for (const auto add : {add_density_row, add_cumulative_rows, add_quantile_rows}) {
        for (const Family& family : kFamilies) {
            add(rows, family);
        }
    }
    add_unregistered_row(rows);
}

}  // namespace bench
