// Every allocation that the library makes fails in turn: the status says so, and nothing leaks.

#include "support/failing_new.hpp"
#include "vela/vela.hpp"

#include <gtest/gtest.h>

#include <functional>

namespace vela::test {
namespace {

TEST(AllocationFailure, GivesItsStatusAndLeaksNothing) {
    const double x[] = {1.0, 2.0, 4.0};
    const double y[] = {2.0, 2.5, 3.0};
    struct Case {
        const char* name;
        int allocations;
        std::function<int()> call;
    };
    const Case cases[] = {
        {"RunPairedT", 1,
         [&] {
             v0::PairedT record;
             record.count = 3;
             return RunPairedT(&record, x, y, 0.95, IntervalType::TwoSided);
         }},
        {"RunOneSampleT", 0,
         [&] {
             v0::OneSampleT record;
             record.count = 3;
             return RunOneSampleT(&record, x, 0.95, IntervalType::TwoSided);
         }},
        {"RunTwoSampleT", 0,
         [&] {
             v0::TwoSampleT record;
             record.count1 = 3;
             record.count2 = 3;
             return RunTwoSampleT(&record, x, y, true, 0.95, IntervalType::TwoSided);
         }},
    };
    for (const Case& c : cases) {
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
}

}  // namespace
}  // namespace vela::test
