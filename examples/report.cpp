#include "report.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>

using vela::AlternativeHypothesis;

namespace {

using Table = std::vector<std::vector<std::string>>;

/// std::to_chars: the decimal point is a point in every locale.
std::string format(double value, std::chars_format style, int precision) {
    char text[64];
    const auto [end, error] = std::to_chars(text, text + sizeof text, value, style, precision);
    return error == std::errc() ? std::string(text, end) : "?";
}

/// How all means, standard deviations and interval ends of one report are written.
struct Digits {
    std::chars_format style;
    int precision;

    std::string operator()(double value) const { return format(value, style, precision); }
};

std::string format_p_value(double p) {
    constexpr double kSmallestResolved = 1e-280;  // tails below are 0 or have lost digits
    return p < kSmallestResolved ? "< 1e-280" : format(p, std::chars_format::general, 4);
}

std::string format_statistic(double value) {
    const bool readable = std::fabs(value) < 1e9;
    return format(value, readable ? std::chars_format::fixed : std::chars_format::scientific, 4);
}

Digits choose_digits(const Report& report) {
    double smallestError = HUGE_VAL;
    double largest = std::fabs(report.means.estimate);
    for (const SampleRow& sample : report.samples) {
        if (sample.seMean > 0.0) {  // one of two samples may be constant
            smallestError = std::min(smallestError, sample.seMean);
        }
        largest = std::max({largest, std::fabs(sample.mean), sample.stDev, sample.seMean});
    }
    const double decimals = std::max(0.0, 3.0 - std::floor(std::log10(smallestError)));
    if (largest >= 1e12 || decimals > 12.0) {
        return {std::chars_format::scientific, 9};
    }
    return {std::chars_format::fixed, static_cast<int>(decimals)};
}

/// Terminal columns, if every character takes one: UTF-8 continuation bytes take none.
std::size_t width_of(const std::string& text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

/// The first column to the left, the others to the right.
std::string format_table(const Table& table) {
    std::vector<std::size_t> widths(table[0].size(), 0);
    for (const auto& row : table) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], width_of(row[i]));
        }
    }
    std::string text;
    for (const auto& row : table) {
        text += "  " + row[0];
        std::size_t padding = widths[0] - width_of(row[0]);
        for (std::size_t i = 1; i < row.size(); ++i) {
            padding += widths[i] - width_of(row[i]) + 3;
            text += std::string(padding, ' ') + row[i];
            padding = 0;
        }
        text += '\n';
    }
    return text;
}

std::string format_samples(const Report& report, const Digits& digits) {
    Table table{{"Sample", "N", "Mean", "StDev", "SE Mean"}};
    for (const SampleRow& sample : report.samples) {
        const bool hasStDev = sample.count > 1 && std::isfinite(sample.stDev);
        table.push_back({sample.name, std::to_string(sample.count), digits(sample.mean),
                         hasStDev ? digits(sample.stDev) : "-", digits(sample.seMean)});
    }
    return format_table(table);
}

std::string format_hypotheses(const std::string& parameter, double hypothesized,
                              AlternativeHypothesis alternative) {
    const char* const relation = alternative == AlternativeHypothesis::LessThan      ? "<"
                                 : alternative == AlternativeHypothesis::GreaterThan ? ">"
                                                                                     : "!=";
    const std::string value = format_exactly(hypothesized);
    return "  Null hypothesis   " + parameter + " = " + value + "\n" + "  Alternative       " +
           parameter + " " + relation + " " + value + "\n";
}

std::string format_interval(const ResultRow& row, AlternativeHypothesis alternative,
                            const Digits& digits) {
    switch (alternative) {
        case AlternativeHypothesis::LessThan: return digits(row.upper);
        case AlternativeHypothesis::GreaterThan: return digits(row.lower);
        case AlternativeHypothesis::NotEqual: break;
    }
    return '(' + digits(row.lower) + ", " + digits(row.upper) + ')';
}

std::string format_results(const Inference& inference, const Report& report, const Digits& digits) {
    const char* const kind = report.alternative == AlternativeHypothesis::LessThan ? "% upper bound"
                             : report.alternative == AlternativeHypothesis::GreaterThan
                                 ? "% lower bound"
                                 : "% confidence interval";
    const std::string percent =
        format(100.0 * inference.confidence, std::chars_format::general, 15);
    Table table{{"Method", percent + kind, "DF"}};
    if (report.hypothesized) {
        table[0].insert(table[0].end(), {"Statistic", "P-value"});
    }
    for (const ResultRow& row : inference.results) {
        table.push_back({row.method, format_interval(row, report.alternative, digits),
                         row.df ? format_exactly(*row.df) : "-"});
        if (report.hypothesized) {
            table.back().insert(table.back().end(),
                                {format_statistic(row.statistic), format_p_value(row.pValue)});
        }
    }
    return format_table(table);
}

std::string format_inference(const Inference& inference, const Report& report,
                             const Digits& digits) {
    std::string text =
        "  Estimate of the " + inference.parameter + ": " + digits(inference.estimate) + "\n\n";
    if (report.hypothesized) {
        text +=
            format_hypotheses(inference.parameter, *report.hypothesized, report.alternative) + "\n";
    }
    return text + format_results(inference, report, digits);
}

}  // namespace

std::string format_exactly(double value) {
    char text[64];
    return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

std::string format_report(const Report& report) {
    const Digits digits = choose_digits(report);
    std::string text = report.title + "\n\n" + format_samples(report, digits) + "\n";
    if (report.pooledStDev) {
        text += "  Pooled standard deviation: " + digits(*report.pooledStDev) + "\n";
    }
    text += format_inference(report.means, report, digits);
    if (report.ranks) {
        text += '\n';
        text += format_inference(*report.ranks, report, digits);
    }
    return text;
}
