// What needs no memory: the distributions, passes over the data, and every test from summaries or
// such a pass.

#include "support/entries.hpp"
#include "support/failing_new.hpp"
#include "vela/vela.hpp"

#include <gtest/gtest.h>

#include <functional>

namespace vela::test {
namespace {

TEST(AllocationFree, EveryDistributionFunction) {
    for (const Entry& entry : entries()) {
        long made = 0;
        int point = 0;
        for_each_grid_point(entry, [&](const Arguments& arguments) {
            if (++point % 3 != 0) {
                return;
            }
            double out[2];
            const double x[] = {arguments[0], arguments[0]};
            const long before = allocations_made();
            entry.scalar(arguments);
            if (entry.array) {
                entry.array(out, x, 2, arguments);
            }
            made += allocations_made() - before;
        });
        EXPECT_EQ(made, 0) << entry.name;
    }
}

struct Call {
    const char* name;
    std::function<void()> run;
};

TEST(AllocationFree, PassesOverTheData) {
    const double x[] = {1.5, -2.0, 4.0, 0.25, 4.0};
    const double y[] = {0.5, 3.0, -1.0, 2.0, 1e300};
    double out[5];
    double first;
    double second;
    v1::SecondSampleMoments moments;
    moments.count = 5;
    v1::RunsTest runs;
    const Call calls[] = {
        {"GetSum", [&] { v1::GetSum(x, 5); }},
        {"GetCumulativeSums", [&] { v1::GetCumulativeSums(x, 5, out); }},
        {"GetProportions", [&] { v1::GetProportions(x, 5, out); }},
        {"GetSampleMean", [&] { v1::GetSampleMean(x, 5); }},
        {"GetSampleVariance", [&] { v1::GetSampleVariance(x, 5); }},
        {"GetSampleVariance about a center", [&] { v1::GetSampleVariance(x, 5, 1.0); }},
        {"GetSampleMeanAndVariance", [&] { v1::GetSampleMeanAndVariance(x, 5, &first, &second); }},
        {"GetCenteredOrderKPowerSums", [&] { v1::GetCenteredOrderKPowerSums(x, 5, out, 4); }},
        {"GetKroSkewnessAndKurtosis",
         [&] { v1::GetKroSkewnessAndKurtosis(x, 5, &first, &second); }},
        {"GetSecondSampleMoments", [&] { v1::GetSecondSampleMoments(&moments, x); }},
        {"GetCovariance", [&] { v1::GetCovariance(x, y, 5, &first, &second); }},
        {"GetPearsonCorrelation", [&] { v1::GetPearsonCorrelation(x, y, 5); }},
        {"GetGeometricMean", [&] { v2::GetGeometricMean(x, 5); }},
        {"Psi", [&] { v2::Psi(-1.0); }},
        {"GetKroCorrelationPValue", [&] { v0::GetKroCorrelationPValue(0.5, 5); }},
        {"RunRunsTest", [&] { v1::RunRunsTest(&runs, x, 1.0, 5); }},
        {"RunKroRunsTest", [&] { v1::RunKroRunsTest(&runs, x, 1.0, 5); }},
    };
    for (const Call& call : calls) {
        const long before = allocations_made();
        call.run();
        EXPECT_EQ(allocations_made(), before) << call.name;
    }
}

TEST(AllocationFree, TestsOfMeansWhateverTheSummary) {
    const double x[] = {1.5, -2.0, 4.0, 0.25, 4.0};
    const auto two = IntervalType::TwoSided;
    const auto less = AlternativeHypothesis::LessThan;
    for (const double h : hostile_values()) {
        v0::OneSampleZ z;
        v0::OneSampleT t;
        v0::PairedT paired;
        v0::TwoSampleT samples;
        z.count = t.count = paired.count = samples.count1 = samples.count2 = 5;
        z.mean = t.mean = t.stDev = paired.meanDiff = paired.stDevDiff = h;
        samples.mean1 = samples.mean2 = samples.stDev1 = samples.stDev2 = h;
        const Call calls[] = {
            {"RunOneSampleZ", [&] { RunOneSampleZ(&z, h, 0.9, two, less, h); }},
            {"RunOneSampleT", [&] { RunOneSampleT(&t, 0.9, two, less, h); }},
            {"RunPairedT", [&] { RunPairedT(&paired, h, two, less, 0.0); }},
            {"RunTwoSampleT", [&] { RunTwoSampleT(&samples, false, h, two, less, 0.0); }},
            {"RunTwoSampleT, pooled", [&] { RunTwoSampleT(&samples, true, 0.9, two, less, h); }},
            {"RunOneSampleZ of data", [&] { RunOneSampleZ(&z, x, 2.0, h, two, less, 0.0); }},
            {"RunOneSampleT of data", [&] { RunOneSampleT(&t, x, h, two, less, 0.0); }},
            {"RunTwoSampleT of data",
             [&] { RunTwoSampleT(&samples, x, x, false, h, two, less, 0.0); }},
        };
        for (const Call& call : calls) {
            const long before = allocations_made();
            call.run();
            EXPECT_EQ(allocations_made(), before) << call.name << " " << h;
        }
    }
}

}  // namespace
}  // namespace vela::test
