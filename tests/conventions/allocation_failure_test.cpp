// Every allocation that the library makes fails in turn: the status says so, the outputs are those
// documented for it, and nothing leaks.

#include "support/failing_new.hpp"
#include "vela/vela.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <new>
#include <vector>

namespace vela::test {
namespace {

struct Case {
    const char* name;
    int allocations;
    std::function<int()> call;
};

void fail_each_allocation(const Case& c) {
    for (int failing = 0; failing <= c.allocations; ++failing) {
        const long before = live_allocations();
        int status = -1;
        {
            const FailingNew fail(failing);
            status = c.call();
        }
        EXPECT_EQ(status, failing < c.allocations ? 30001 : 0) << c.name << " " << failing;
        EXPECT_EQ(live_allocations(), before) << c.name << " " << failing;
    }
}

std::vector<double> make_sample(unsigned n) {
    std::vector<double> x(n);
    for (unsigned i = 0; i < n; ++i) {
        x[i] = std::sin(i * 1.7);
    }
    return x;
}

TEST(AllocationFailure, GivesItsStatusAndLeaksNothing) {
    // Sizes on every side of the thresholds between the methods of ordering.
    for (const unsigned n : {3U, 1000U, 5000U, 70000U}) {
        const std::vector<double> x = make_sample(n);
        std::vector<double> ranks(n);
        const double probabilities[] = {0.25, 0.5};
        double out[2];
        double modes[5];
        unsigned numModes = 0;
        unsigned frequency = 0;
        const Case cases[] = {
            {"GetSampleQuantiles", 1,
             [&] { return v1::GetSampleQuantiles(x.data(), n, 6, out, probabilities, 2); }},
            {"GetSampleQuantiles, unknown method", 1,
             [&] {
                 const int status = v1::GetSampleQuantiles(x.data(), n, 10, out, probabilities, 2);
                 return status == 30017 ? 0 : status;
             }},
            {"GetTrimmedMean, everything cut", 1,
             [&] {
                 int status = -1;
                 EXPECT_TRUE(IsNaN(v1::GetTrimmedMean(x.data(), n, 2.0, &status)));
                 return status;
             }},
            {"GetRank", 1,
             [&] {
                 const int status = v1::GetRank(x.data(), n, ranks.data());
                 EXPECT_EQ(status != 0, IsNaN(ranks[0]) && IsNaN(ranks[n - 1]));
                 return status;
             }},
            {"GetMode", 1,
             [&] {
                 const int status = v1::GetMode(x.data(), n, modes, 3, &numModes, &frequency);
                 EXPECT_TRUE(IsNaN(modes[0]) && IsNaN(modes[2]) && numModes == 0 && frequency == 0);
                 return status;
             }},
            {"GetTrimmedMean", 1,
             [&] {
                 int status = -1;
                 const double value = v1::GetTrimmedMean(x.data(), n, 0.1, &status);
                 EXPECT_EQ(IsNaN(value), status != 0);
                 return status;
             }},
            {"GetKroTrimmedMean", 1,
             [&] {
                 int status = -1;
                 const double value = v1::GetKroTrimmedMean(x.data(), n, &status);
                 EXPECT_EQ(IsNaN(value), status != 0);
                 return status;
             }},
            {"GetKroFiveNumberSummary", 1,
             [&] {
                 v1::FiveNumberSummary five;
                 const int status = v1::GetKroFiveNumberSummary(&five, x.data(), n);
                 EXPECT_EQ(IsNaN(five.median), status != 0);
                 return status;
             }},
            {"GetKro2013ExtendedSummary", 1,
             [&] {
                 v1::SecondSampleMoments moments;
                 v1::FiveNumberSummary five;
                 moments.count = n;
                 const int status = v1::GetKro2013ExtendedSummary(&moments, &five, modes, &numModes,
                                                                  &frequency, x.data());
                 EXPECT_FALSE(IsNaN(moments.mean)) << "filled before the copy is made";
                 return status;
             }},
            {"RunKroBoxplotHelper", 1,
             [&] {
                 v1::KroBoxplotHelper box;
                 box.mean = 7.0;
                 const int status = v1::RunKroBoxplotHelper(&box, 0.95, x.data(), n);
                 EXPECT_EQ(IsNaN(box.mean) && IsNaN(box.minimum), status != 0);
                 return status;
             }},
            {"GetSpearmanCorrelation", 4,
             [&] {
                 int status = 30001;
                 const double value = v1::GetSpearmanCorrelation(x.data(), x.data(), n, &status);
                 EXPECT_EQ(IsNaN(value), status != 0);
                 return status;
             }},
            {"RunOneSampleSign", 1,
             [&] {
                 v0::OneSampleSign record;
                 record.count = n;
                 record.median = 7.0;
                 const int status = RunOneSampleSign(&record, x.data(), 0.5, IntervalType::TwoSided,
                                                     AlternativeHypothesis::NotEqual, 0.0);
                 EXPECT_EQ(IsNaN(record.median) && IsNaN(record.innerPosition) &&
                               IsNaN(record.pValue) && IsNaN(record.below),
                           status == 30001);
                 return status == 10002 ? 0 : status;  // three observations have no inner interval
             }},
            {"RunPairedT", 1,
             [&] {
                 v0::PairedT record;
                 record.count = n;
                 return RunPairedT(&record, x.data(), x.data(), 0.95, IntervalType::TwoSided);
             }},
            {"RunKroMannWhitney", 4,
             [&] {
                 v0::MannWhitney record;
                 record.count1 = n;
                 record.count2 = n;
                 const int status =
                     RunKroMannWhitney(&record, x.data(), x.data(), 0.95, IntervalType::TwoSided,
                                       AlternativeHypothesis::NotEqual);
                 EXPECT_EQ(IsNaN(record.median1) && IsNaN(record.statistic), status != 0);
                 return status;
             }},
            {"RunKroOneSampleWilcoxon", 2,
             [&] {
                 v0::OneSampleWilcoxon record;
                 record.count = n;
                 try {
                     return RunKroOneSampleWilcoxon(&record, x.data(), 0.95, IntervalType::TwoSided,
                                                    AlternativeHypothesis::NotEqual, 0.1);
                 } catch (const std::bad_alloc&) {
                     EXPECT_TRUE(IsNaN(record.estimate));
                     return 30001;  // here an exception, elsewhere this status
                 }
             }},
        };
        for (const Case& c : cases) {
            fail_each_allocation(c);
        }
        std::vector<unsigned> order(n);
        std::vector<unsigned> orderWithoutMemory(n);
        v1::GetOrder(x.data(), n, order.data());
        {
            const FailingNew fail(0);
            v1::GetOrder(x.data(), n, orderWithoutMemory.data());
        }
        EXPECT_EQ(order, orderWithoutMemory);
    }
}

}  // namespace
}  // namespace vela::test
