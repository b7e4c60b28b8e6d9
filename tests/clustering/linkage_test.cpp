#include "clustering/linkage.hpp"

#include "clustering/condensed.hpp"

#include <gtest/gtest.h>

namespace vela::test {
namespace {

using namespace vela::clustering;

TEST(Linkage, UpdatesOfASymmetricAndOfAGeneralCase) {
    struct Case {
        const LinkFunction& linkage;
        double symmetric, general;
    };
    const AverageLinkage average;
    const SingleLinkage single;
    const CompleteLinkage complete;
    const WardLinkage ward;
    const McQuittyLinkage mcquitty;
    const MedianLinkage median;
    const CentroidLinkage centroid;
    // Parts of 1 and 3 rows at distance 2; symmetric: both 8 from k; general: 4 and 8; k has 4
    // rows.
    const Case cases[] = {{average, 8.0, 7.0},     {single, 8.0, 4.0},   {complete, 8.0, 8.0},
                          {ward, 11.0, 8.5},       {mcquitty, 8.0, 6.0}, {median, 7.5, 5.5},
                          {centroid, 7.625, 6.625}};
    const Cluster first = {0, 0.0, 1};
    const Cluster second = {1, 0.0, 3};
    const Cluster merged = {0, 2.0, 4, &first, &second};
    for (const Case& c : cases) {
        EXPECT_EQ(c.linkage.update(2.0, 8.0, 8.0, merged, 4), c.symmetric);
        EXPECT_EQ(c.linkage.update(2.0, 4.0, 8.0, merged, 4), c.general);
    }
}

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
