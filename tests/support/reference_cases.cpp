#include "support/reference_cases.hpp"

#include "support/csv.hpp"
#include "support/equality.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <set>

namespace vela::test {
namespace {

Values parse_list(const std::string& text) {
    Values values;
    for (const std::string& field : split(text, ' ')) {
        if (!field.empty()) {
            values.push_back(parse_double(field));
        }
    }
    return values;
}

/// The sets of tests/data/, by name; generated.csv gives them by the rule of its header.
std::map<std::string, Values> read_data_sets() {
    std::map<std::string, Values> sets = {{"", {}}, {"empty", {}}};
    for (const char* file : {"datasets.csv", "clustering_datasets.csv"}) {
        for (const Row& row : read_csv(file)) {
            sets[row.at(0)] = parse_list(row.at(2));
        }
    }
    for (const Row& row : read_csv("generated.csv")) {
        std::uint64_t state = std::stoull(row.at(2));
        Values values(std::stoul(row.at(1)));
        for (double& value : values) {
            state = state * 6364136223846793005U + 1442695040888963407U;
            const auto draw = static_cast<double>((state >> 33U) % std::stoull(row.at(3)));
            value = parse_double(row.at(5)) + parse_double(row.at(4)) * draw;
        }
        sets[row.at(0)] = values;
    }
    return sets;
}

ReferenceCase read_case(const Row& row, const std::map<std::string, Values>& sets) {
    ReferenceCase next{row.at(0), row.at(1), {}, {}};
    for (const std::string& name : split(row.at(2), ';')) {
        next.data.push_back(sets.at(name));
    }
    for (const std::string& pair : split(row.at(3), ';')) {
        if (!pair.empty()) {
            const auto parts = split(pair, '=');
            next.arguments[parts.at(0)] = parse_list(parts.at(1));
        }
    }
    return next;
}

void compare(const Values& got, const Row& row) {
    const Values expected = parse_list(row.at(5));
    const Values tolerances = parse_list(row.at(6));
    ASSERT_EQ(got.size(), expected.size()) << row[1] << " " << row[4];
    for (std::size_t i = 0; i < got.size(); ++i) {
        const double tolerance = tolerances.at(tolerances.size() == 1 ? 0 : i);
        EXPECT_TRUE(same_bits(got[i], expected[i]) || std::fabs(got[i] - expected[i]) <= tolerance)
            << row[1] << " " << row[4] << "[" << i << "] is " << testing::PrintToString(got[i])
            << ", expected " << testing::PrintToString(expected[i]) << " within " << tolerance;
    }
}

}  // namespace

double& Results::value(const std::string& name) {
    return insert({name, Values(1, std::numeric_limits<double>::quiet_NaN())}).first->second[0];
}

void Results::add_fields(const void* record, const std::string& names) {
    const auto* next = static_cast<const double*>(record);
    for (const std::string& name : split(names, ' ')) {
        value(name) = *next++;
    }
}

void check_reference_cases(const std::string& fileName, const Runners& runners) {
    const auto sets = read_data_sets();
    std::set<std::string> seen;
    auto runner = runners.end();
    Results results;
    for (const Row& row : read_csv(fileName)) {
        if (!row.at(0).empty()) {
            runner = runners.find(row[0]);
            if (runner != runners.end()) {
                seen.insert(row[0]);
                results = {};
                runner->second(read_case(row, sets), results);
            }
        }
        if (runner != runners.end()) {
            compare(results.at(row.at(4)), row);
        }
    }
    EXPECT_EQ(seen.size(), runners.size()) << "a function without cases in " << fileName;
}

}  // namespace vela::test
