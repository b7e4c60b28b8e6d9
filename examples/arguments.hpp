#ifndef EXAMPLES_ARGUMENTS_HPP
#define EXAMPLES_ARGUMENTS_HPP

#include <vela/hypothesis.hpp>

#include <optional>
#include <string>
#include <vector>

enum class Test { Help, OneSample, Paired, TwoSample };

/// What the command line asks for.
struct Arguments {
    Test test = Test::Help;
    std::string path;
    std::vector<std::string> columns;
    std::optional<double> hypothesized;  ///< none: no test, only an interval
    std::optional<double> sigma;         ///< known standard deviation: Z instead of t
    double confidence = 0.95;
    vela::AlternativeHypothesis alternative = vela::AlternativeHypothesis::NotEqual;
};

extern const char* const kUsage;

/// @throws InputError for anything that kUsage does not allow
Arguments parse_arguments(const std::vector<std::string>& words);

#endif
