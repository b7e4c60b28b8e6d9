#include "support/reference_cases.hpp"
#include "vela/vela.hpp"

#include <gtest/gtest.h>

namespace vela::test {
namespace {

using v0::MannWhitney;
using v0::OneSampleSign;
using v0::OneSampleWilcoxon;
using v1::RunsTest;

const char* const kSignFields =
    "median innerConfidence outerConfidence innerLower interpolatedLower outerLower innerUpper "
    "interpolatedUpper outerUpper innerPosition outerPosition pValue below equal above";
const char* const kWilcoxonFields = "estimate achievedConfidence lower upper statistic pValue";
const char* const kMannWhitneyFields =
    "median1 median2 estimate lower upper achievedConfidence statistic pValue pValueAdjusted";

AlternativeHypothesis alternative_of(const ReferenceCase& c) {
    return static_cast<AlternativeHypothesis>(c.integer("alternative"));
}

/// `run` has the overloads of a one-sample test.
template <class Record, class Run>
void run_one_sample(const ReferenceCase& c, Results& r, const char* fields, Run run) {
    Record record;
    record.count = c.n();
    const double confidence = c.get("confidence");
    const auto type = static_cast<IntervalType>(c.integer("interval"));
    r.value("status") = c.has("alternative") ? run(&record, c.x(), confidence, type,
                                                   alternative_of(c), c.get("hypothesized"))
                                             : run(&record, c.x(), confidence, type);
    r.add_fields(&record, fields);
    r.value("count") = record.count;
}

void run_mann_whitney(const ReferenceCase& c, Results& r) {
    MannWhitney record;
    record.count1 = c.n();
    record.count2 = size(c.data.at(1));
    r.value("status") =
        RunKroMannWhitney(&record, c.x(), c.data.at(1).data(), c.get("confidence"),
                          static_cast<IntervalType>(c.integer("interval")), alternative_of(c));
    r.add_fields(&record, kMannWhitneyFields);
}

template <class Run>
void run_runs_test(const ReferenceCase& c, Results& r, Run run) {
    RunsTest record;
    r.value("status") = run(&record, c.x(), c.get("K"), c.n());
    r.value("below") = record.below;
    r.value("above") = record.above;
    r.value("runs") = record.runs;
    r.value("expected") = record.expected;
    r.value("pValue") = record.pValue;
}

const Runners kFunctions = {
    {"RunOneSampleSign",
     [](auto& c, auto& r) {
         run_one_sample<OneSampleSign>(c, r, kSignFields,
                                       [](auto... a) { return v0::RunOneSampleSign(a...); });
     }},
    {"RunKroOneSampleSign",
     [](auto& c, auto& r) {
         run_one_sample<OneSampleSign>(c, r, kSignFields,
                                       [](auto... a) { return v0::RunKroOneSampleSign(a...); });
     }},
    {"RunKroOneSampleWilcoxon",
     [](auto& c, auto& r) {
         run_one_sample<OneSampleWilcoxon>(
             c, r, kWilcoxonFields, [](auto... a) { return v0::RunKroOneSampleWilcoxon(a...); });
     }},
    {"RunKroMannWhitney", run_mann_whitney},
    {"RunRunsTest", [](auto& c, auto& r) { run_runs_test(c, r, v1::RunRunsTest); }},
    {"RunKroRunsTest", [](auto& c, auto& r) { run_runs_test(c, r, v1::RunKroRunsTest); }},
};

TEST(NonparametricTests, AgreeWithReferenceValues) {
    check_reference_cases("nonparametric.csv", kFunctions);
}

}  // namespace
}  // namespace vela::test
