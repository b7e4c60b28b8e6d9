#ifndef VELA_TESTS_DESCRIPTIVE_ORDER_CASES_HPP
#define VELA_TESTS_DESCRIPTIVE_ORDER_CASES_HPP

#include "support/csv.hpp"
#include "support/equality.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace vela::test {

using Values = std::vector<double>;
using Results = std::map<std::string, Values>;

/// One call of tests/data/order.csv.
struct OrderCase {
    struct Expectation {
        std::string result;
        Values values;
        Values tolerances;
    };

    std::string name;
    std::string function;
    Values data;
    std::map<std::string, Values> arguments;
    std::vector<Expectation> expectations;

    unsigned int count() const { return static_cast<unsigned int>(data.size()); }
    double get(const std::string& argument) const { return arguments.at(argument).front(); }
};

inline Values parse_list(const std::string& text) {
    Values values;
    for (const std::string& field : split(text, ' ')) {
        values.push_back(parse_double(field));
    }
    return values;
}

/// The sets of tests/data/, by name; generated.csv gives them by the rule of its header.
inline std::map<std::string, Values> read_order_data() {
    std::map<std::string, Values> sets{{"empty", {}}};
    for (const Row& row : read_csv("datasets.csv")) {
        sets[row.at(0)] = row.at(1) == "0" ? Values{} : parse_list(row.at(2));
    }
    for (const Row& row : read_csv("generated.csv")) {
        std::uint64_t state = std::stoull(row.at(2));
        Values values;
        for (int i = std::stoi(row.at(1)); i > 0; --i) {
            state = state * 6364136223846793005U + 1442695040888963407U;
            const auto draw = static_cast<double>((state >> 33U) % std::stoull(row.at(3)));
            values.push_back(parse_double(row.at(5)) + parse_double(row.at(4)) * draw);
        }
        sets[row.at(0)] = values;
    }
    return sets;
}

inline std::vector<OrderCase> read_order_cases() {
    const auto sets = read_order_data();
    std::vector<OrderCase> cases;
    for (const Row& row : read_csv("order.csv")) {
        if (!row.at(0).empty()) {
            OrderCase next{row.at(1), row[0], sets.at(row.at(2)), {}, {}};
            for (const std::string& pair : split(row.at(3), ';')) {
                if (!pair.empty()) {
                    const auto parts = split(pair, '=');
                    next.arguments[parts.at(0)] = parse_list(parts.at(1));
                }
            }
            cases.push_back(next);
        }
        cases.back().expectations.push_back(
            {row.at(4), parse_list(row.at(5)), parse_list(row.at(6))});
    }
    return cases;
}

/// Runs the cases of every function that `run` knows; it fills the results by name.
inline void check_order_cases(
    const std::map<std::string, std::function<Results(const OrderCase&)>>& functions) {
    std::map<std::string, int> seen;
    for (const OrderCase& c : read_order_cases()) {
        const auto function = functions.find(c.function);
        if (function == functions.end()) {
            continue;
        }
        ++seen[c.function];
        const Results results = function->second(c);
        for (const auto& [result, expected, tolerances] : c.expectations) {
            const Values& got = results.at(result);
            ASSERT_EQ(got.size(), expected.size()) << c.name << " " << result;
            for (std::size_t i = 0; i < got.size(); ++i) {
                const double tolerance = tolerances[tolerances.size() == 1 ? 0 : i];
                EXPECT_TRUE(same_bits(got[i], expected[i]) ||
                            std::fabs(got[i] - expected[i]) <= tolerance)
                    << c.name << " " << result << "[" << i << "] is "
                    << testing::PrintToString(got[i]) << ", expected "
                    << testing::PrintToString(expected[i]) << " within " << tolerance;
            }
        }
    }
    EXPECT_EQ(seen.size(), functions.size()) << "a function without cases";
}

}  // namespace vela::test

#endif
