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
    std::function<int()> call;
};

void fail_each_allocation(const Case& c) {
    const long made = allocations_made();
    EXPECT_EQ(c.call(), 0) << c.name;
    const long needed = allocations_made() - made;
    EXPECT_GT(needed, 0) << c.name;
    for (int failing = 0; failing < needed; ++failing) {
        const long before = live_allocations();
        int status = -1;
        {
            const FailingNew fail(failing);
            status = c.call();
        }
        EXPECT_EQ(status, 30001) << c.name << " " << failing;
        EXPECT_EQ(live_allocations(), before) << c.name << " " << failing;
    }
}

/// A sample, and where results go.
struct Workspace {
    explicit Workspace(unsigned count) : n(count), x(count), huge(count), ranks(count) {
        for (unsigned i = 0; i < n; ++i) {
            x[i] = std::sin(i * 1.7);
            huge[i] = (x[i] + 4.0) * 0.3e308;
        }
    }

    unsigned n;
    std::vector<double> x;
    std::vector<double> huge;  // whose sums overflow
    std::vector<double> ranks;
    double out[2] = {};
    double modes[5] = {};
    unsigned numModes = 0;
    unsigned frequency = 0;
};

constexpr double kProbabilities[] = {0.25, 0.5};
constexpr auto kTwoSided = IntervalType::TwoSided;
constexpr auto kNotEqual = AlternativeHypothesis::NotEqual;

/// The status of a function that returns its result, which has to be NaN with one.
template <class Function>
int status_of(Function function) {
    int status = -1;
    const double value = function(&status);
    EXPECT_EQ(IsNaN(value), status != 0);
    return status;
}

std::vector<Case> order_statistics(Workspace& w) {
    const double* x = w.x.data();
    return {
        {"GetSampleQuantiles",
         [&w, x] { return v1::GetSampleQuantiles(x, w.n, 6, w.out, kProbabilities, 2); }},
        {"GetSampleQuantiles, unknown method",
         [&w, x] {
             const int status = v1::GetSampleQuantiles(x, w.n, 10, w.out, kProbabilities, 2);
             return status == 30017 ? 0 : status;
         }},
        {"GetRank",
         [&w, x] {
             const int status = v1::GetRank(x, w.n, w.ranks.data());
             EXPECT_EQ(status != 0, IsNaN(w.ranks[0]) && IsNaN(w.ranks[w.n - 1]));
             return status;
         }},
        {"GetMode",
         [&w, x] {
             const int status = v1::GetMode(x, w.n, w.modes, 3, &w.numModes, &w.frequency);
             EXPECT_TRUE(IsNaN(w.modes[0]) && IsNaN(w.modes[2]) && w.numModes == 0 &&
                         w.frequency == 0);
             return status;
         }},
        {"GetTrimmedMean",
         [&w, x] { return status_of([&](int* s) { return v1::GetTrimmedMean(x, w.n, 0.1, s); }); }},
        {"GetTrimmedMean, everything cut",
         [&w, x] {
             int status = -1;
             EXPECT_TRUE(IsNaN(v1::GetTrimmedMean(x, w.n, 2.0, &status)));
             return status;
         }},
        {"GetKroTrimmedMean",
         [&w, x] { return status_of([&](int* s) { return v1::GetKroTrimmedMean(x, w.n, s); }); }},
        {"GetSpearmanCorrelation",
         [&w, x] {
             int status = 30001;  // unwritten where the ranking fails
             const double value = v1::GetSpearmanCorrelation(x, x, w.n, &status);
             EXPECT_EQ(IsNaN(value), status != 0);
             return status;
         }},
    };
}

std::vector<Case> summaries(Workspace& w) {
    const double* x = w.x.data();
    return {
        {"GetKroFiveNumberSummary",
         [&w, x] {
             v1::FiveNumberSummary five;
             const int status = v1::GetKroFiveNumberSummary(&five, x, w.n);
             EXPECT_EQ(IsNaN(five.median), status != 0);
             return status;
         }},
        {"GetKro2013ExtendedSummary",
         [&w, x] {
             v1::SecondSampleMoments moments;
             v1::FiveNumberSummary five;
             moments.count = w.n;
             const int status = v1::GetKro2013ExtendedSummary(&moments, &five, w.modes, &w.numModes,
                                                              &w.frequency, x);
             EXPECT_FALSE(IsNaN(moments.mean)) << "filled before the copy is made";
             return status;
         }},
        {"RunKroBoxplotHelper",
         [&w, x] {
             v1::KroBoxplotHelper box;
             box.mean = 7.0;
             const int status = v1::RunKroBoxplotHelper(&box, 0.95, x, w.n);
             EXPECT_EQ(IsNaN(box.mean) && IsNaN(box.minimum), status != 0);
             return status;
         }},
    };
}

template <class Run>
Case sign_case(const char* name, Workspace& w, Run run) {
    return {name, [&w, run] {
                v0::OneSampleSign record;
                record.count = w.n;
                record.median = 7.0;
                const int status = run(&record, w.x.data());
                EXPECT_EQ(IsNaN(record.median) && IsNaN(record.innerPosition), status == 30001);
                EXPECT_TRUE(status != 30001 || (IsNaN(record.pValue) && IsNaN(record.below)));
                return status == 10002 ? 0 : status;  // three have no inner interval
            }};
}

template <class Run>
Case wilcoxon_case(const char* name, Workspace& w, Run run) {
    return {name, [&w, run] {
                v0::OneSampleWilcoxon record;
                record.count = w.n;
                try {
                    return run(&record, w);
                } catch (const std::bad_alloc&) {
                    EXPECT_TRUE(IsNaN(record.pValue));
                    return 30001;  // here an exception, elsewhere this status
                }
            }};
}

std::vector<Case> tests_of_hypothesis(Workspace& w) {
    using v0::OneSampleSign;
    using v0::OneSampleWilcoxon;
    const double* x = w.x.data();
    return {
        sign_case("RunOneSampleSign, interval", w,
                  [](OneSampleSign* r, const double* data) {
                      return RunOneSampleSign(r, data, 0.5, kTwoSided);
                  }),
        sign_case("RunOneSampleSign", w,
                  [](OneSampleSign* r, const double* data) {
                      return RunOneSampleSign(r, data, 0.5, kTwoSided, kNotEqual, 0.0);
                  }),
        sign_case("RunKroOneSampleSign", w,
                  [](OneSampleSign* r, const double* data) {
                      return RunKroOneSampleSign(r, data, 0.5, kTwoSided, kNotEqual, 0.0);
                  }),
        wilcoxon_case("RunKroOneSampleWilcoxon, interval", w,
                      [](OneSampleWilcoxon* r, const Workspace& from) {
                          return RunKroOneSampleWilcoxon(r, from.x.data(), 0.95, kTwoSided);
                      }),
        wilcoxon_case("RunKroOneSampleWilcoxon", w,
                      [](OneSampleWilcoxon* r, const Workspace& from) {
                          return RunKroOneSampleWilcoxon(r, from.x.data(), 0.95, kTwoSided,
                                                         kNotEqual, 0.1);
                      }),
        wilcoxon_case("RunKroOneSampleWilcoxon, sums overflow", w,
                      [](OneSampleWilcoxon* r, const Workspace& from) {
                          return RunKroOneSampleWilcoxon(r, from.huge.data(), 0.95, kTwoSided,
                                                         kNotEqual, 0.1);
                      }),
        {"RunPairedT",
         [&w, x] {
             v0::PairedT record;
             record.count = w.n;
             return RunPairedT(&record, x, x, 0.95, kTwoSided, kNotEqual, 0.0);
         }},
        {"RunKroMannWhitney",
         [&w, x] {
             v0::MannWhitney record;
             record.count1 = w.n;
             record.count2 = w.n;
             const int status = RunKroMannWhitney(&record, x, x, 0.95, kTwoSided, kNotEqual);
             EXPECT_EQ(IsNaN(record.median1) && IsNaN(record.statistic), status != 0);
             return status;
         }},
    };
}

TEST(AllocationFailure, GivesItsStatusAndLeaksNothing) {
    // Sizes on every side of the thresholds between the methods of ordering.
    for (const unsigned n : {30U, 1000U, 5000U, 70000U}) {
        Workspace w(n);
        for (const auto make_cases : {order_statistics, summaries, tests_of_hypothesis}) {
            for (const Case& c : make_cases(w)) {
                fail_each_allocation(c);
            }
        }
    }
}

TEST(AllocationFailure, LeavesTheOrderToASortInPlace) {
    for (const unsigned n : {3U, 1000U, 5000U, 70000U}) {
        const Workspace w(n);
        std::vector<unsigned> order(n);
        std::vector<unsigned> orderWithoutMemory(n);
        v1::GetOrder(w.x.data(), n, order.data());
        for (const int failing : {0, 1}) {
            {
                const FailingNew fail(failing);
                v1::GetOrder(w.x.data(), n, orderWithoutMemory.data());
            }
            EXPECT_EQ(order, orderWithoutMemory) << failing;
        }
    }
}

}  // namespace
}  // namespace vela::test
