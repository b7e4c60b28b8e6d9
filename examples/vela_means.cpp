// Tests of means, and by ranks, on columns of a CSV file: the command line, the file and the report
// are in the other sources; here are the calls of the library.

#include "arguments.hpp"
#include "csv_columns.hpp"
#include "report.hpp"
#include "text.hpp"

#include <vela/vela.hpp>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace {

using Columns = std::vector<std::vector<double>>;

std::uint32_t count_of(const std::vector<double>& values) {
    return static_cast<std::uint32_t>(values.size());
}

/// The interval that belongs to the alternative: an upper bound to "less", a lower to "greater".
vela::IntervalType interval_of(const Arguments& arguments) {
    return static_cast<vela::IntervalType>(arguments.alternative);
}

void require_success(int status) {
    if (status != 0) {
        throw InputError("the computation failed with status " + std::to_string(status));
    }
}

/// Fewer values have no standard deviation.
void require_two_values(const Arguments& arguments, const Columns& columns) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].size() < 2) {
            throw InputError("column " + quoted(arguments.columns[i]) +
                             " has one value; a t test needs at least two");
        }
    }
}

void require_usable(double standardError) {
    if (standardError == 0.0) {
        throw InputError("the standard error is 0: the values do not vary, or too little");
    }
    if (!std::isfinite(standardError)) {
        throw InputError("the values are too large for a standard error");
    }
}

/// What a record can still leave open after status 0.
void require_results(const Inference& inference, const Arguments& arguments) {
    if (!std::isfinite(inference.estimate)) {
        throw InputError("the values are too large for a mean");
    }
    for (const ResultRow& row : inference.results) {
        if (std::isnan(row.lower) || std::isnan(row.upper)) {
            throw InputError("no interval can be computed with confidence " +
                             format_exactly(arguments.confidence));
        }
        if (arguments.hypothesized && std::isnan(row.pValue)) {
            throw InputError("no P-value can be computed from these values");
        }
    }
}

Report start_report(const Arguments& arguments, const std::string& title,
                    const std::string& parameter) {
    return {.title = title + ", " + printable(arguments.path, arguments.path.size()),
            .alternative = arguments.alternative,
            .hypothesized = arguments.hypothesized,
            .samples = {},
            .means = {parameter, 0.0, arguments.confidence, {}}};
}

/// The confidence that an interval by ranks has, to the digits worth showing.
double shown_confidence(double achieved) { return std::round(achieved * 1e6) / 1e6; }

Inference rank_one_sample(const Arguments& arguments, const std::vector<double>& values,
                          const std::string& parameter) {
    vela::v0::OneSampleWilcoxon w;
    w.count = count_of(values);
    require_success(vela::v0::RunKroOneSampleWilcoxon(&w, values.data(), arguments.confidence,
                                                      interval_of(arguments), arguments.alternative,
                                                      arguments.hypothesized.value_or(0.0)));
    return {parameter,
            w.estimate,
            shown_confidence(w.achievedConfidence),
            {{"Wilcoxon", w.lower, w.upper, w.statistic, {}, w.pValue}}};
}

/// None when all values of a sample are equal, which t can still compare.
std::optional<Inference> rank_two_samples(const Arguments& arguments, const Columns& columns,
                                          const std::string& parameter) {
    // The test is of equal medians; the hypothesized difference is taken off the first sample.
    const double shift = *arguments.hypothesized;
    std::vector<double> shifted = columns[0];
    for (double& value : shifted) {
        value -= shift;
    }
    vela::v0::MannWhitney w;
    w.count1 = count_of(shifted);
    w.count2 = count_of(columns[1]);
    constexpr int oneValueOnly = 30023;
    const int status =
        vela::v0::RunKroMannWhitney(&w, shifted.data(), columns[1].data(), arguments.confidence,
                                    interval_of(arguments), arguments.alternative);
    if (status == oneValueOnly) {
        return {};
    }
    require_success(status);
    // A one-sided interval has no other end.
    const vela::IntervalType type = interval_of(arguments);
    const double lower = type == vela::IntervalType::UpperBound ? -HUGE_VAL : w.lower + shift;
    const double upper = type == vela::IntervalType::LowerBound ? HUGE_VAL : w.upper + shift;
    Inference ranks{parameter,
                    w.estimate + shift,
                    shown_confidence(w.achievedConfidence),
                    {{"Mann-Whitney", lower, upper, w.statistic, {}, w.pValue}}};
    constexpr double noTies = -1.0;
    if (w.pValueAdjusted != noTies) {
        ranks.results.push_back(
            {"adjusted for ties", lower, upper, w.statistic, {}, w.pValueAdjusted});
    }
    return ranks;
}

Report test_one_sample_z(const Arguments& arguments, const Columns& columns) {
    vela::v0::OneSampleZ z;
    z.count = count_of(columns[0]);
    require_success(vela::v0::RunOneSampleZ(
        &z, columns[0].data(), *arguments.sigma, arguments.confidence, interval_of(arguments),
        arguments.alternative, arguments.hypothesized.value_or(0.0)));
    require_usable(z.seMean);
    const std::string name = printable(arguments.columns[0]);
    Report report = start_report(arguments, "One-sample Z test", "mean of " + name);
    report.samples = {{name, z.count, z.mean, z.stDev, z.seMean}};
    report.means.estimate = z.mean;
    report.means.results = {{"Z, sigma = " + format_exactly(*arguments.sigma),
                             z.lower,
                             z.upper,
                             z.statistic,
                             {},
                             z.pValue}};
    return report;
}

Report test_one_sample_t(const Arguments& arguments, const Columns& columns) {
    require_two_values(arguments, columns);
    vela::v0::OneSampleT t;
    t.count = count_of(columns[0]);
    require_success(vela::v0::RunOneSampleT(&t, columns[0].data(), arguments.confidence,
                                            interval_of(arguments), arguments.alternative,
                                            arguments.hypothesized.value_or(0.0)));
    require_usable(t.seMean);
    const std::string name = printable(arguments.columns[0]);
    Report report = start_report(arguments, "One-sample t and Wilcoxon tests", "mean of " + name);
    report.samples = {{name, t.count, t.mean, t.stDev, t.seMean}};
    report.means.estimate = t.mean;
    report.means.results = {{"t", t.lower, t.upper, t.statistic, t.count - 1.0, t.pValue}};
    report.ranks = rank_one_sample(arguments, columns[0], "median of " + name);
    return report;
}

Report test_paired(const Arguments& arguments, const Columns& columns) {
    if (columns[0].size() != columns[1].size()) {
        throw InputError(
            "paired columns of different length: " + std::to_string(columns[0].size()) + " and " +
            std::to_string(columns[1].size()) + " values");
    }
    require_two_values(arguments, columns);
    vela::v0::PairedT t;
    t.count = count_of(columns[0]);
    require_success(vela::v0::RunPairedT(&t, columns[0].data(), columns[1].data(),
                                         arguments.confidence, interval_of(arguments),
                                         arguments.alternative, *arguments.hypothesized));
    require_usable(t.seMeanDiff);
    const std::string first = printable(arguments.columns[0]);
    const std::string second = printable(arguments.columns[1]);
    const std::string difference = first + " - " + second;
    Report report = start_report(arguments, "Paired t and Wilcoxon tests", "mean of " + difference);
    report.samples = {{first, t.count, t.mean1, t.stDev1, t.seMean1},
                      {second, t.count, t.mean2, t.stDev2, t.seMean2},
                      {"Difference", t.count, t.meanDiff, t.stDevDiff, t.seMeanDiff}};
    report.means.estimate = t.meanDiff;
    report.means.results = {{"Paired t", t.lower, t.upper, t.statistic, t.count - 1.0, t.pValue}};
    std::vector<double> differences(t.count);
    std::transform(columns[0].begin(), columns[0].end(), columns[1].begin(), differences.begin(),
                   std::minus<>());
    report.ranks = rank_one_sample(arguments, differences, "median of " + difference);
    return report;
}

Report test_two_samples(const Arguments& arguments, const Columns& columns) {
    require_two_values(arguments, columns);
    const std::string first = printable(arguments.columns[0]);
    const std::string second = printable(arguments.columns[1]);
    Report report = start_report(arguments, "Two-sample t and Mann-Whitney tests",
                                 "mean of " + first + " - mean of " + second);
    for (const bool pooled : {true, false}) {
        vela::v0::TwoSampleT t;
        t.count1 = count_of(columns[0]);
        t.count2 = count_of(columns[1]);
        require_success(vela::v0::RunTwoSampleT(&t, columns[0].data(), columns[1].data(), pooled,
                                                arguments.confidence, interval_of(arguments),
                                                arguments.alternative, *arguments.hypothesized));
        require_usable(std::hypot(t.seMean1, t.seMean2));
        report.samples = {{first, t.count1, t.mean1, t.stDev1, t.seMean1},
                          {second, t.count2, t.mean2, t.stDev2, t.seMean2}};
        report.means.estimate = t.difference;
        report.means.results.push_back(
            {pooled ? "Pooled t" : "Welch t", t.lower, t.upper, t.statistic, t.df, t.pValue});
        if (pooled) {
            report.pooledStDev = t.pooledStDev;
        }
    }
    report.ranks =
        rank_two_samples(arguments, columns, "median of " + first + " - median of " + second);
    return report;
}

std::string make_answer(const Arguments& arguments) {
    if (arguments.test == Test::Help) {
        return kUsage;
    }
    const Columns columns = read_csv_columns(arguments.path, arguments.columns);
    Report report;
    switch (arguments.test) {
        case Test::Help: break;
        case Test::OneSample:
            report = arguments.sigma ? test_one_sample_z(arguments, columns)
                                     : test_one_sample_t(arguments, columns);
            break;
        case Test::Paired: report = test_paired(arguments, columns); break;
        case Test::TwoSample: report = test_two_samples(arguments, columns); break;
    }
    require_results(report.means, arguments);
    if (report.ranks) {
        require_results(*report.ranks, arguments);
    }
    return format_report(report);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const std::string answer =
            make_answer(parse_arguments({argv + std::min(argc, 1), argv + argc}));
        if (std::fputs(answer.c_str(), stdout) == EOF || std::fflush(stdout) != 0) {
            throw InputError("cannot write the report");
        }
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vela_means: %s\n", error.what());
        return 1;
    }
}
