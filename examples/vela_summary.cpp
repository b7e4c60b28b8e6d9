// A one-page summary of a column of a CSV file: moments, quartiles, modes, median and a boxplot.

#include "csv_columns.hpp"
#include "text.hpp"

#include <vela/v1/moments.hpp>
#include <vela/v1/order_statistics.hpp>
#include <vela/v1/summaries.hpp>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace vela::v1;

const char* const kUsage = "vela_summary FILE COLUMN [--confidence C]\n";
const char* const kNoMemory = "the memory does not suffice";

void require(bool isGiven, const std::string& otherwise) {
    if (!isGiven) {
        throw InputError(otherwise);
    }
}

double parse_confidence(const std::string& word) {
    const double value = parse_number(word);
    require(value > 0.0 && value < 1.0,
            "--confidence: " + quoted(word) + " is not between 0 and 1");
    return value;
}

/// A hyphen for what the sample does not have, such as the skewness of two values.
std::string format(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.9g", value);
    return std::isfinite(value) ? text : "-";
}

std::string format_modes(const std::vector<double>& values) {
    constexpr unsigned int kShown = 5;
    double modes[kShown + 1];
    unsigned int count = 0;
    unsigned int frequency = 0;
    require(GetMode(values.data(), static_cast<unsigned int>(values.size()), modes, kShown + 1,
                    &count, &frequency) == 0,
            kNoMemory);
    std::string text;
    for (unsigned int i = 0; i < std::min(count, kShown); ++i) {
        text += (i == 0 ? "" : ", ") + format(modes[i]);
    }
    text += count > kShown ? ", ..." : "";
    return count == 0 ? "none" : text + "  (frequency " + std::to_string(frequency) + ")";
}

/// The box spans the quartiles; a value further from it than 1.5 times its length is an outlier,
/// and the whiskers end at the last values that are none.
std::string draw_boxplot(const KroBoxplotHelper& box, const std::vector<double>& values) {
    constexpr std::size_t kWidth = 60;
    const double range = box.maximum > box.minimum ? box.maximum - box.minimum : 1.0;
    const auto place = [&](double value) {
        return static_cast<std::size_t>(std::lround((value - box.minimum) / range * (kWidth - 1)));
    };
    const double reach = 1.5 * (box.thirdQuartile - box.firstQuartile);
    double low = box.firstQuartile;
    double high = box.thirdQuartile;
    std::string plot(kWidth, ' ');
    for (const double value : values) {
        if (value < box.firstQuartile - reach || value > box.thirdQuartile + reach) {
            plot[place(value)] = 'o';
        } else {
            low = std::min(low, value);
            high = std::max(high, value);
        }
    }
    const auto fill = [&](double from, double to, char mark) {
        std::fill(&plot[place(from)], &plot[place(to)] + 1, mark);
    };
    fill(low, high, '-');
    fill(box.firstQuartile, box.thirdQuartile, '=');
    plot[place(box.firstQuartile)] = '[';
    plot[place(box.thirdQuartile)] = ']';
    plot[place(box.median)] = '|';
    plot.erase(plot.find_last_not_of(' ') + 1);
    std::string scale = format(box.minimum);
    const std::string last = format(box.maximum);
    scale.append(kWidth - std::min(kWidth - 1, scale.size() + last.size()), ' ').append(last);
    return "  " + plot + "\n  " + scale + "\n\n" +
           "  [=|=] quartiles and median; - within 1.5 lengths of the box, o beyond\n";
}

std::string make_report(const std::string& path, const std::string& column, double confidence) {
    const std::vector<double> values = read_csv_columns(path, {column})[0];
    const auto count = static_cast<unsigned int>(values.size());
    KroBoxplotHelper box;
    require(RunKroBoxplotHelper(&box, confidence, values.data(), count) == 0, kNoMemory);
    require(std::isfinite(box.standardDeviation), "the values are too large to summarise");
    double skewness = 0.0;
    double kurtosis = 0.0;
    GetKroSkewnessAndKurtosis(values.data(), count, &skewness, &kurtosis);
    const std::string ends = format(box.medianLower) + ", " + format(box.medianUpper);
    const std::pair<std::string, std::string> lines[] = {
        {"N", std::to_string(count)},
        {"Mean", format(box.mean)},
        {"Standard deviation", count > 1 ? format(box.standardDeviation) : "-"},
        {"Skewness", format(skewness)},
        {"Excess kurtosis", count > 65537 ? "-" : format(kurtosis)},  // beyond it falls short
        {"Minimum", format(box.minimum)},
        {"First quartile", format(box.firstQuartile)},
        {"Median", format(box.median)},
        {"  " + format(100.0 * confidence) + "% interval",
         std::isnan(box.medianLower) ? "-" : "(" + ends + ")"},
        {"Third quartile", format(box.thirdQuartile)},
        {"Maximum", format(box.maximum)},
        {"Mode", format_modes(values)}};
    std::string text = "Summary of " + printable(column) + ", " + printable(path) + "\n\n";
    for (const auto& [label, value] : lines) {
        const std::size_t gap = 22 - std::min<std::size_t>(20, label.size());
        text.append("  ").append(label).append(gap, ' ').append(value).append("\n");
    }
    return text + "\n" + draw_boxplot(box, values);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
        const bool isHelp = std::find(words.begin(), words.end(), "--help") != words.end();
        const bool isLong = words.size() == 4 && words[2] == "--confidence";
        require(isHelp || isLong || words.size() == 2,
                "a file and one column are needed; see vela_summary --help");
        const std::string answer =
            isHelp ? kUsage
                   : make_report(words[0], words[1], isLong ? parse_confidence(words[3]) : 0.95);
        require(std::fputs(answer.c_str(), stdout) != EOF && std::fflush(stdout) == 0,
                "cannot write the report");
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vela_summary: %s\n", error.what());
        return 1;
    }
}
