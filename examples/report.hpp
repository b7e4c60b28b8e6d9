#ifndef EXAMPLES_REPORT_HPP
#define EXAMPLES_REPORT_HPP

#include <vela/hypothesis.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// The summary of one sample.
struct SampleRow {
    std::string name;
    std::uint32_t count;
    double mean;
    double stDev;
    double seMean;
};

/// The interval, and the test if there is one, by one method.
struct ResultRow {
    std::string method;
    double lower;
    double upper;
    double statistic;
    std::optional<double> df;
    double pValue;
};

/// The results about one parameter.
struct Inference {
    std::string parameter;  ///< what the interval and the hypotheses are about
    double estimate;
    double confidence;  ///< that the intervals have: by ranks not quite the one asked for
    std::vector<ResultRow> results;
};

struct Report {
    std::string title;
    vela::AlternativeHypothesis alternative;
    std::optional<double> hypothesized;  ///< none: no test was asked for
    std::vector<SampleRow> samples;
    Inference means;
    std::optional<Inference> ranks{};
    std::optional<double> pooledStDev{};
};

/// The shortest text that reads back as the same number.
std::string format_exactly(double value);

/// The report as text. Means and interval ends get the decimals that show four digits of the
/// smallest standard error: more would be noise, fewer would hide the width of the interval.
std::string format_report(const Report& report);

#endif
