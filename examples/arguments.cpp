#include "arguments.hpp"

#include "text.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>

using vela::AlternativeHypothesis;

const char* const kUsage =
    R"(Tests of means on columns of a CSV file, with the tests by ranks beside them: Wilcoxon's for one
sample or pairs, Mann and Whitney's for two samples that both vary.

vela_means one-sample FILE COLUMN  [--mean M] [--sigma S] [OPTION]...
vela_means paired     FILE COLUMN1 COLUMN2  [--difference D] [OPTION]...
vela_means two-sample FILE COLUMN1 COLUMN2  [--difference D] [OPTION]...

  --mean M            test the hypothesis that the mean is M; by ranks, the median (otherwise:
                      interval only)
  --sigma S           the standard deviation is known to be S: Z instead of t
  --difference D      test the hypothesis that the difference, first minus second, is D
                      (otherwise 0)
  --confidence C      of the interval, between 0 and 1 (otherwise 0.95)
  --alternative WHAT  less, two-sided or greater (otherwise two-sided); "less" goes with an upper
                      bound, "greater" with a lower bound
)";

namespace {

struct Command {
    std::string_view name;
    Test test;
    std::size_t columns;
};

constexpr Command kCommands[] = {
    {"one-sample", Test::OneSample, 1},
    {"paired", Test::Paired, 2},
    {"two-sample", Test::TwoSample, 2},
};

const Command& find_command(const std::string& word) {
    for (const Command& command : kCommands) {
        if (command.name == word) {
            return command;
        }
    }
    throw InputError("unknown command " + quoted(word) + "; see vela_means --help");
}

AlternativeHypothesis parse_alternative(const std::string& word) {
    if (word == "less") {
        return AlternativeHypothesis::LessThan;
    }
    if (word == "two-sided") {
        return AlternativeHypothesis::NotEqual;
    }
    if (word == "greater") {
        return AlternativeHypothesis::GreaterThan;
    }
    throw InputError(quoted(word) + " is not less, two-sided or greater");
}

double parse_between(const std::string& word, double above, double below, const char* domain) {
    const double value = parse_number(word);
    if (value <= above || value >= below) {
        throw InputError(quoted(word) + " is not " + domain);
    }
    return value;
}

bool is_known(const std::string& option, Test test) {
    if (option == "--mean" || option == "--sigma") {
        return test == Test::OneSample;
    }
    if (option == "--difference") {
        return test != Test::OneSample;
    }
    return option == "--confidence" || option == "--alternative";
}

void set_option(Arguments* arguments, const std::string& option, const std::string& word) {
    if (option == "--sigma") {
        arguments->sigma = parse_between(word, 0.0, HUGE_VAL, "a positive number");
    } else if (option == "--confidence") {
        arguments->confidence = parse_between(word, 0.0, 1.0, "between 0 and 1");
    } else if (option == "--alternative") {
        arguments->alternative = parse_alternative(word);
    } else {
        arguments->hypothesized = parse_number(word);
    }
}

}  // namespace

Arguments parse_arguments(const std::vector<std::string>& words) {
    Arguments arguments;
    if (words.empty()) {
        throw InputError("no command given; see vela_means --help");
    }
    if (std::find(words.begin(), words.end(), "--help") != words.end()) {
        return arguments;
    }
    const Command& command = find_command(words[0]);
    arguments.test = command.test;
    if (command.test != Test::OneSample) {
        arguments.hypothesized = 0.0;
    }
    std::vector<std::string> operands;
    for (std::size_t i = 1; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (!word.starts_with("--")) {
            operands.push_back(word);
            continue;
        }
        if (!is_known(word, command.test)) {
            throw InputError("unknown option " + quoted(word) + " for " + words[0]);
        }
        if (++i == words.size()) {
            throw InputError(word + ": the value is missing");
        }
        try {
            set_option(&arguments, word, words[i]);
        } catch (const InputError& error) {
            throw InputError(word + ": " + error.what());
        }
    }
    if (operands.size() != command.columns + 1) {
        throw InputError(words[0] + " takes a file and " + std::to_string(command.columns) +
                         (command.columns == 1 ? " column" : " columns"));
    }
    arguments.path = operands[0];
    arguments.columns.assign(operands.begin() + 1, operands.end());
    return arguments;
}
