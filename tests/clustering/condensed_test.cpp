#include "clustering/condensed.hpp"

#include <gtest/gtest.h>

namespace vela::test {
namespace {

using clustering::pair_count;
using clustering::pair_index;

TEST(Condensed, PairsBeyond32BitsHaveTheirPlaces) {
    const int rows = 100000;
    const std::size_t last = pair_count(rows) - 1;
    EXPECT_EQ(last, 4999949999u);
    EXPECT_EQ(pair_index(rows, 0, 1), 0u);
    EXPECT_EQ(pair_index(rows, rows - 2, rows - 1), last);
    EXPECT_EQ(pair_index(rows, rows - 3, rows - 1), last - 1);
    EXPECT_EQ(pair_index(rows, rows - 2, rows - 3), last - 2);
}

}  // namespace
}  // namespace vela::test
