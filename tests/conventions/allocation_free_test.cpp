// The distributions need no memory, also where they throw and catch a fault inside: without memory
// a text on the heap would turn it into std::bad_alloc.

#include "support/entries.hpp"
#include "support/failing_new.hpp"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace vela::test
