#include "support/equality.hpp"
#include "vela/missing_value.hpp"
#include "vela/nms/clustering/distance_matrix.hpp"
#include "vela/nms/types/make_containers.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

namespace vela::test {
namespace {

using namespace nms::clustering;
using nms::StatlibraryErrorCode;
using Table = std::unique_ptr<nms::types::IRectangularArray<double>>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

Table make_table(const std::vector<double>& values, int columns) {
    return Table(nms::types::MakeRectangularArray(
        values.data(), static_cast<int>(values.size()) / columns, columns));
}

TEST(DistanceMatrix, KeepsItsPromisesAtAndOutsideTheEdges) {
    DistanceMatrix matrix;
    EXPECT_EQ(matrix.RowCount(), 0);
    EXPECT_TRUE(std::isnan(matrix(0, 0)));
    EXPECT_EQ(matrix.Init(4, 7.0), StatlibraryErrorCode::Success);
    const int far = std::numeric_limits<int>::max();
    for (const auto& [i, j] : {std::pair{-1, 0}, {0, 4}, {4, 4}, {far, -far}, {far, far}}) {
        matrix.Set(i, j, 9.0);
        EXPECT_TRUE(std::isnan(matrix(i, j)));
    }
    matrix.Set(2, 2, 9.0);
    double next = 0.0;
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < i; ++j) {
            EXPECT_EQ(matrix(i, j), 7.0);
            next += 1.0;
            i % 2 == 0 ? matrix.Set(i, j, next) : matrix.Set(j, i, next);
        }
    }
    next = 0.0;
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(matrix(i, i), 0.0);
        for (int j = 0; j < i; ++j) {
            next += 1.0;
            EXPECT_EQ(matrix(i, j), next);
            EXPECT_EQ(matrix(j, i), next);
        }
    }
    EXPECT_EQ(matrix.Init(-1, 0.0), StatlibraryErrorCode::InvalidSize);
    EXPECT_EQ(matrix(3, 2), 6.0);
    // More than any allocator gives: 2^61 numbers.
    EXPECT_EQ(matrix.Init(std::numeric_limits<int>::max(), 0.0), StatlibraryErrorCode::OutOfMemory);
    EXPECT_EQ(matrix(3, 2), 6.0);
    const DistanceMatrix copy = matrix;
    const DistanceMatrix moved = std::move(matrix);
    EXPECT_EQ(copy(3, 2), 6.0);
    EXPECT_EQ(moved(3, 2), 6.0);
}

TEST(CreateForClusterObservations, UsesWhatBothRowsHaveScaledUp) {
    // The second variable has the values 1, 3 and 8: mean 4, variance 13. The third does not vary.
    const std::vector<double> values = {0, 1, 5, 2,    kNaN, 3,    5,    MissingValue,
                                        3, 8, 5, kNaN, kNaN, kNaN, kNaN, 1};
    const Table table = make_table(values, 4);
    const double v1 = 4.5, v2 = 13.0;
    struct Case {
        DistanceEnums kind;
        double rows01, rows02, rows12, rows03;
    };
    const Case cases[] = {
        {DistanceEnums::Euclidean, std::sqrt(4.0 * 2), std::sqrt(58.0 * 4 / 3), std::sqrt(25.0 * 2),
         2.0},
        {DistanceEnums::SquaredEuclidean, 4.0 * 2, 58.0 * 4 / 3, 25.0 * 2, 4.0},
        {DistanceEnums::Manhattan, 2.0 * 2, 10.0 * 4 / 3, 5.0 * 2, 4.0},
        {DistanceEnums::Pearson, std::sqrt(4 / v2 * 2), std::sqrt((9 / v1 + 49 / v2) * 4 / 3),
         std::sqrt(25 / v2 * 2), std::sqrt(1 / 0.5 * 4)},
        {DistanceEnums::SquaredPearson, 4 / v2 * 2, (9 / v1 + 49 / v2) * 4 / 3, 25 / v2 * 2,
         1 / 0.5 * 4},
    };
    for (const Case& c : cases) {
        DistanceMatrix matrix;
        ASSERT_EQ(CreateForClusterObservations(matrix, *table, c.kind),
                  StatlibraryErrorCode::Success);
        const int kind = static_cast<int>(c.kind);
        constexpr double kRounding = 1e-15;  // half a dozen operations
        EXPECT_TRUE(within_relative(matrix(0, 1), c.rows01, kRounding)) << kind;
        EXPECT_TRUE(within_relative(matrix(0, 2), c.rows02, kRounding)) << kind;
        EXPECT_TRUE(within_relative(matrix(1, 2), c.rows12, kRounding)) << kind;
        EXPECT_TRUE(within_relative(matrix(0, 3), c.rows03, kRounding)) << kind;
        EXPECT_TRUE(std::isnan(matrix(1, 3))) << kind;
    }
}

struct MissingIsNegative final : nms::types::IMissingValueInfo {
    bool IsMissing(double value) const override { return value < 0.0; }
};

TEST(CreateForClusterObservations, TheInfoObjectAloneSaysWhatIsMissing) {
    const Table table = make_table({1, 2, 4, -1, kNaN, 3, MissingValue, 3}, 2);
    const MissingIsNegative info;
    DistanceMatrix matrix;
    CreateForClusterObservations(matrix, *table, DistanceEnums::Manhattan, &info);
    EXPECT_EQ(matrix(0, 1), 6.0);
    EXPECT_TRUE(std::isnan(matrix(0, 2)));
    EXPECT_EQ(matrix(0, 3), MissingValue);
}

TEST(CreateForClusterVariables, CorrelatesTheRowsThatBothColumnsHave) {
    // Rows 0, 2 and 3 are common to the first two columns, which fall on a line there.
    const Table table =
        make_table({1, 6, 5, 2, kNaN, 5, 3, 2, 5, 4, 0, 5, kNaN, 100, 5, MissingValue, 3, 5}, 3);
    DistanceMatrix matrix;
    for (const bool absolute : {false, true}) {
        ASSERT_EQ(CreateForClusterVariables(matrix, *table, absolute),
                  StatlibraryErrorCode::Success);
        EXPECT_EQ(matrix.RowCount(), 3);
        EXPECT_NEAR(matrix(0, 1), absolute ? 0.0 : 2.0, 1e-15);
        EXPECT_TRUE(std::isnan(matrix(0, 2)));
    }
}

struct Shape final : nms::types::IRectangularArray<double> {
    Shape(int rowCount, int columnCount) : rows(rowCount), columns(columnCount) {}
    int RowCount() const override { return rows; }
    int ColumnCount() const override { return columns; }
    double operator()(int, int) const override { return 1.0; }
    int rows;
    int columns;
};

TEST(CreateForCluster, OddShapes) {
    using enum StatlibraryErrorCode;
    constexpr int most = std::numeric_limits<int>::max();
    struct Case {
        int rows, columns;
        StatlibraryErrorCode code;
    };
    const Case cases[] = {{0, 0, Success},          {0, 3, Success},      {3, 0, Success},
                          {1, 1, Success},          {-1, 3, InvalidSize}, {3, -1, InvalidSize},
                          {most, most, OutOfMemory}};
    for (const Case& c : cases) {
        const bool isSuccess = c.code == Success;
        DistanceMatrix matrix;
        matrix.Init(5, 1.0);
        EXPECT_EQ(
            CreateForClusterObservations(matrix, Shape(c.rows, c.columns), DistanceEnums::Pearson),
            c.code);
        EXPECT_EQ(matrix.RowCount(), isSuccess ? c.rows : 5);
        matrix.Init(5, 1.0);
        EXPECT_EQ(CreateForClusterVariables(matrix, Shape(c.rows, c.columns), false), c.code);
        EXPECT_EQ(matrix.RowCount(), isSuccess ? c.columns : 5);
    }
    DistanceMatrix matrix;
    CreateForClusterObservations(matrix, Shape(3, 0), DistanceEnums::Euclidean);
    EXPECT_TRUE(std::isnan(matrix(0, 1)));  // nothing in common
    for (const int kind : {1999, 2005, 0}) {
        EXPECT_EQ(
            CreateForClusterObservations(matrix, Shape(2, 2), static_cast<DistanceEnums>(kind)),
            InvalidEnumeration);
        EXPECT_EQ(matrix.RowCount(), 3);
    }
}

}  // namespace
}  // namespace vela::test
