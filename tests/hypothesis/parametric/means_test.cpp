#include "support/csv.hpp"
#include "support/floating_point_state.hpp"
#include "support/reference_cases.hpp"
#include "support/threads.hpp"
#include "vela/vela.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace vela::test {
namespace {

using v0::OneSampleT;
using v0::OneSampleZ;
using v0::PairedT;
using v0::TwoSampleT;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Fills a record's inputs from the arguments and calls `run` with the arguments that every
/// overload ends in. The order of the doubles is part of the binary interface.
template <class Record, class Run>
void run_test(const ReferenceCase& c, Results& r, Record record, const std::string& names,
              Run run) {
    auto* field = reinterpret_cast<double*>(&record);
    for (const std::string& name : split(names, ' ')) {
        *field = c.has(name) ? c.get(name) : *field;
        ++field;
    }
    const auto type = static_cast<IntervalType>(c.integer("interval"));
    const double confidence = c.get("confidence");
    r.value("status") = c.has("alternative")
                            ? run(&record, confidence, type,
                                  static_cast<AlternativeHypothesis>(c.integer("alternative")),
                                  c.get("hypothesized"))
                            : run(&record, confidence, type);
    r.add_fields(&record, names);
}

/// The number of observations: of a sample, or the argument in the place of one.
std::uint32_t count_of(const ReferenceCase& c, std::size_t sample, const char* argument) {
    return c.has(argument) ? static_cast<std::uint32_t>(c.get(argument)) : size(c.data.at(sample));
}

const std::string kOneSampleFields = "mean stDev seMean lower upper statistic pValue";
const std::string kPairedFields =
    "mean1 mean2 stDev1 stDev2 seMean1 seMean2 meanDiff stDevDiff seMeanDiff lower upper statistic "
    "pValue";
const std::string kTwoSampleFields =
    "mean1 mean2 stDev1 stDev2 seMean1 seMean2 difference pooledStDev df lower upper statistic "
    "pValue";

const Runners kFunctions = {
    {"RunOneSampleZ",
     [](auto& c, auto& r) {
         OneSampleZ record;
         record.count = count_of(c, 0, "count");
         run_test(c, r, record, kOneSampleFields, [&](OneSampleZ* z, auto... rest) {
             return c.has("count") ? RunOneSampleZ(z, c.get("sigma"), rest...)
                                   : RunOneSampleZ(z, c.x(), c.get("sigma"), rest...);
         });
     }},
    {"RunOneSampleT",
     [](auto& c, auto& r) {
         OneSampleT record;
         record.count = count_of(c, 0, "count");
         run_test(c, r, record, kOneSampleFields, [&](OneSampleT* t, auto... rest) {
             return c.has("count") ? RunOneSampleT(t, rest...) : RunOneSampleT(t, c.x(), rest...);
         });
     }},
    {"RunPairedT",
     [](auto& c, auto& r) {
         PairedT record;
         record.count = count_of(c, 0, "count");
         run_test(c, r, record, kPairedFields, [&](PairedT* t, auto... rest) {
             return c.has("count") ? RunPairedT(t, rest...)
                                   : RunPairedT(t, c.x(), c.data.at(1).data(), rest...);
         });
     }},
    {"RunTwoSampleT",
     [](auto& c, auto& r) {
         TwoSampleT record;
         record.count1 = count_of(c, 0, "count1");
         record.count2 = count_of(c, 1, "count2");
         const bool pooled = c.get("pooled") != 0.0;
         run_test(c, r, record, kTwoSampleFields, [&](TwoSampleT* t, auto... rest) {
             return c.has("count1") ? RunTwoSampleT(t, pooled, rest...)
                                    : RunTwoSampleT(t, c.x(), c.data.at(1).data(), pooled, rest...);
         });
     }},
};

TEST(TestsOfMeans, AgreeWithReferenceValues) { check_reference_cases("means.csv", kFunctions); }

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
