#include "support/csv.hpp"
#include "support/equality.hpp"
#include "support/floating_point_state.hpp"
#include "support/threads.hpp"
#include "vela/vela.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace vela::test {
namespace {

using v0::OneSampleT;
using v0::OneSampleZ;
using v0::PairedT;
using v0::TwoSampleT;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// One call of the data file: its arguments by name, its data sets, its expected results.
struct Case {
    std::string function;
    std::map<std::string, double> arguments;
    std::vector<std::vector<double>> data;
    struct Expectation {
        std::string result;
        double value;
        double tolerance;
    };
    std::vector<Expectation> expectations;

    double get(const std::string& name) const { return arguments.at(name); }
    IntervalType type() const {
        return static_cast<IntervalType>(static_cast<int>(get("interval")));
    }
    AlternativeHypothesis alternative() const {
        return static_cast<AlternativeHypothesis>(static_cast<int>(get("alternative")));
    }
};

std::map<std::string, std::vector<double>> read_data_sets() {
    std::map<std::string, std::vector<double>> sets;
    for (const Row& row : read_csv("datasets.csv")) {
        std::vector<double>& values = sets[row.at(0)];
        for (const std::string& field : split(row.at(2), ' ')) {
            values.push_back(parse_double(field));
        }
    }
    return sets;
}

std::vector<Case> read_cases() {
    const auto sets = read_data_sets();
    std::vector<Case> cases;
    for (const Row& row : read_csv("means.csv")) {
        if (!row.at(0).empty()) {
            Case next{row[0], {}, {}, {}};
            for (const std::string& pair : split(row.at(3), ';')) {
                const auto parts = split(pair, '=');
                next.arguments[parts.at(0)] = parse_double(parts.at(1));
            }
            for (const std::string& name : split(row.at(2), ';')) {
                if (!name.empty()) {
                    next.data.push_back(sets.at(name));
                }
            }
            cases.push_back(next);
        }
        cases.back().expectations.push_back(
            {row.at(4), parse_double(row.at(5)), parse_double(row.at(6))});
    }
    return cases;
}

/// The field of a record that comes at its name's place in the list, null for another name: the
/// order of the doubles is part of the binary interface.
double* field(void* record, const std::string& names, const std::string& name) {
    const auto all = split(names, ' ');
    const auto found = std::find(all.begin(), all.end(), name);
    return found == all.end() ? nullptr : static_cast<double*>(record) + (found - all.begin());
}

/// Fills a record's inputs from the arguments, calls `run` with the arguments that every overload
/// ends in, and checks every expected result.
template <class Record, class Run>
void check(const Case& c, Record record, const std::string& names, Run run) {
    for (const auto& [name, value] : c.arguments) {
        if (double* input = field(&record, names, name)) {
            *input = value;
        }
    }
    const int status =
        c.arguments.contains("alternative")
            ? run(&record, c.get("confidence"), c.type(), c.alternative(), c.get("hypothesized"))
            : run(&record, c.get("confidence"), c.type());
    for (const auto& [result, expected, tolerance] : c.expectations) {
        const double got = result == "status" ? status : *field(&record, names, result);
        EXPECT_TRUE(same_bits(got, expected) || std::fabs(got - expected) <= tolerance)
            << c.function << " " << result << " is " << testing::PrintToString(got) << ", expected "
            << testing::PrintToString(expected) << " within " << tolerance;
    }
}

std::uint32_t size_or_argument(const Case& c, std::size_t sample, const char* argument) {
    return static_cast<std::uint32_t>(
        sample < c.data.size() ? static_cast<double>(c.data[sample].size()) : c.get(argument));
}

const std::string kOneSampleFields = "mean stDev seMean lower upper statistic pValue";
const std::string kPairedFields =
    "mean1 mean2 stDev1 stDev2 seMean1 seMean2 meanDiff stDevDiff seMeanDiff lower upper statistic "
    "pValue";
const std::string kTwoSampleFields =
    "mean1 mean2 stDev1 stDev2 seMean1 seMean2 difference pooledStDev df lower upper statistic "
    "pValue";

void check(const Case& c) {
    if (c.function == "RunOneSampleZ") {
        OneSampleZ record;
        record.count = size_or_argument(c, 0, "count");
        check(c, record, kOneSampleFields, [&](OneSampleZ* r, auto... rest) {
            return c.data.empty() ? RunOneSampleZ(r, c.get("sigma"), rest...)
                                  : RunOneSampleZ(r, c.data[0].data(), c.get("sigma"), rest...);
        });
    } else if (c.function == "RunOneSampleT") {
        OneSampleT record;
        record.count = size_or_argument(c, 0, "count");
        check(c, record, kOneSampleFields, [&](OneSampleT* r, auto... rest) {
            return c.data.empty() ? RunOneSampleT(r, rest...)
                                  : RunOneSampleT(r, c.data[0].data(), rest...);
        });
    } else if (c.function == "RunPairedT") {
        PairedT record;
        record.count = size_or_argument(c, 0, "count");
        check(c, record, kPairedFields, [&](PairedT* r, auto... rest) {
            return c.data.empty() ? RunPairedT(r, rest...)
                                  : RunPairedT(r, c.data[0].data(), c.data[1].data(), rest...);
        });
    } else {
        ASSERT_EQ(c.function, "RunTwoSampleT");
        TwoSampleT record;
        record.count1 = size_or_argument(c, 0, "count1");
        record.count2 = size_or_argument(c, 1, "count2");
        const bool pooled = c.get("pooled") != 0.0;
        check(c, record, kTwoSampleFields, [&](TwoSampleT* r, auto... rest) {
            return c.data.empty()
                       ? RunTwoSampleT(r, pooled, rest...)
                       : RunTwoSampleT(r, c.data[0].data(), c.data[1].data(), pooled, rest...);
        });
    }
}

TEST(TestsOfMeans, AgreeWithReferenceValues) {
    for (const Case& c : read_cases()) {
        check(c);
    }
}

TEST(TestsOfMeans, ThrowNothingWhateverStateTheHostLeft) {
    on_thread(Registration::kRegistered, [] {
        SetKroFpuStates();
        const bool wereArmed = traps_are_armed();
        const double constant[] = {3.0, 3.0, 3.0};
        const double hostile[] = {std::numeric_limits<double>::quiet_NaN(), kInfinity, 1e308,
                                  -1e308};
        OneSampleT t;
        t.count = 3;
        EXPECT_EQ(RunOneSampleT(&t, constant, 0.95, IntervalType::TwoSided,
                                AlternativeHypothesis::NotEqual, 2.0),
                  0);
        EXPECT_EQ(t.statistic, kInfinity);
        EXPECT_EQ(t.pValue, 0.0);
        EXPECT_EQ(RunOneSampleT(&t, constant, 0.95, IntervalType::TwoSided,
                                AlternativeHypothesis::NotEqual, 3.0),
                  0);
        EXPECT_TRUE(IsNaN(t.statistic) && IsNaN(t.pValue));
        t.count = 4;
        EXPECT_EQ(RunOneSampleT(&t, hostile, 0.95, IntervalType::LowerBound,
                                AlternativeHypothesis::LessThan, 0.0),
                  0);
        EXPECT_TRUE(IsNaN(t.mean) && IsNaN(t.pValue));
        EXPECT_EQ(t.upper, kInfinity);
        EXPECT_EQ(traps_are_armed(), wereArmed) << "the host has its own state back";
        ResetFpuStates();
    });
}

TEST(TestsOfMeans, AnswerTooFewObservationsWithNaN) {
    for (const std::uint32_t count : {0U, 1U}) {
        const double x[] = {5.0};
        OneSampleT t;
        t.count = count;
        EXPECT_EQ(RunOneSampleT(&t, count == 0 ? nullptr : x, 0.95, IntervalType::UpperBound,
                                AlternativeHypothesis::NotEqual, 4.0),
                  0);
        EXPECT_EQ(t.lower, -kInfinity);
        EXPECT_TRUE(IsNaN(t.upper) && IsNaN(t.pValue)) << count;
        TwoSampleT two;
        two.count1 = count;
        two.count2 = count;
        for (const bool pooled : {false, true}) {
            EXPECT_EQ(RunTwoSampleT(&two, x, x, pooled, 0.95, IntervalType::TwoSided,
                                    AlternativeHypothesis::NotEqual, 0.0),
                      0);
            EXPECT_TRUE(IsNaN(two.lower) && IsNaN(two.upper) && IsNaN(two.pValue)) << count;
        }
    }
}

TEST(TestsOfMeans, AnswerAnImpossibleConfidenceWithNaNEnds) {
    OneSampleZ z;
    z.mean = 1.0;
    z.count = 9;
    for (const double confidence :
         {1.0, -1.0, 1.5, std::numeric_limits<double>::quiet_NaN(), kInfinity}) {
        EXPECT_EQ(RunOneSampleZ(&z, 2.0, confidence, IntervalType::TwoSided), 0);
        EXPECT_TRUE(IsNaN(z.lower) && IsNaN(z.upper)) << confidence;
        EXPECT_EQ(RunOneSampleZ(&z, 2.0, confidence, static_cast<IntervalType>(2)), 30002);
    }
}

TEST(Records, StartWithoutResults) {
    const TwoSampleT two;
    EXPECT_TRUE(IsNaN(two.mean1) && IsNaN(two.pooledStDev) && IsNaN(two.pValue));
    EXPECT_EQ(two.count1, 0U);
    EXPECT_EQ(two.count2, 2146959360U);
    const PairedT paired;
    EXPECT_TRUE(IsNaN(paired.mean1) && IsNaN(paired.pValue));
    EXPECT_EQ(paired.count, 0U);
}

}  // namespace
}  // namespace vela::test
