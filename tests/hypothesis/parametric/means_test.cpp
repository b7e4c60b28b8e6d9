#include "support/csv.hpp"
#include "support/reference_cases.hpp"
#include "support/threads.hpp"
#include "vela/vela.hpp"

#include <gtest/gtest.h>

#include <string>

namespace vela::test {
namespace {

using v0::OneSampleT;
using v0::OneSampleZ;
using v0::PairedT;
using v0::TwoSampleT;

/// The number of observations: of a sample, or the argument in the place of one.
std::uint32_t count_of(const ReferenceCase& c, std::size_t sample, const char* argument) {
    return c.has(argument) ? static_cast<std::uint32_t>(c.get(argument)) : size(c.data.at(sample));
}

/// Fills a record's inputs from the arguments and calls `run` with the arguments that every
/// overload ends in. The order of the doubles is part of the binary interface.
template <class Record, class Run>
void run_test(const ReferenceCase& c, Results& r, const std::string& names, Run run) {
    Record record;
    if constexpr (requires { record.count1; }) {
        record.count1 = count_of(c, 0, "count1");
        record.count2 = count_of(c, 1, "count2");
    } else {
        record.count = count_of(c, 0, "count");
    }
    auto* field = reinterpret_cast<double*>(&record);
    for (const std::string& name : split(names, ' ')) {
        *field = c.has(name) ? c.get(name) : *field;
        ++field;
    }
    const auto type = static_cast<IntervalType>(c.integer("interval"));
    const double confidence = c.get("confidence");
    under_armed_host([&] {
        r.value("status") = c.has("alternative")
                                ? run(&record, confidence, type,
                                      static_cast<AlternativeHypothesis>(c.integer("alternative")),
                                      c.get("hypothesized"))
                                : run(&record, confidence, type);
    });
    r.add_fields(&record, names);
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
         run_test<OneSampleZ>(c, r, kOneSampleFields, [&](OneSampleZ* z, auto... rest) {
             return c.has("count") ? RunOneSampleZ(z, c.get("sigma"), rest...)
                                   : RunOneSampleZ(z, c.x(), c.get("sigma"), rest...);
         });
     }},
    {"RunOneSampleT",
     [](auto& c, auto& r) {
         run_test<OneSampleT>(c, r, kOneSampleFields, [&](OneSampleT* t, auto... rest) {
             return c.has("count") ? RunOneSampleT(t, rest...) : RunOneSampleT(t, c.x(), rest...);
         });
     }},
    {"RunPairedT",
     [](auto& c, auto& r) {
         run_test<PairedT>(c, r, kPairedFields, [&](PairedT* t, auto... rest) {
             return c.has("count") ? RunPairedT(t, rest...)
                                   : RunPairedT(t, c.x(), c.data.at(1).data(), rest...);
         });
     }},
    {"RunTwoSampleT",
     [](auto& c, auto& r) {
         const bool pooled = c.get("pooled") != 0.0;
         run_test<TwoSampleT>(c, r, kTwoSampleFields, [&](TwoSampleT* t, auto... rest) {
             return c.has("count1") ? RunTwoSampleT(t, pooled, rest...)
                                    : RunTwoSampleT(t, c.x(), c.data.at(1).data(), pooled, rest...);
         });
     }},
};

TEST(TestsOfMeans, AgreeWithReferenceValuesAndThrowNothing) {
    check_reference_cases("means.csv", kFunctions);
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
