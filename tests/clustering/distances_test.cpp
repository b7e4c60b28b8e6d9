#include "support/special_values.hpp"
#include "vela/missing_value.hpp"
#include "vela/nms/clustering/distance_matrix.hpp"
#include "vela/nms/types/make_containers.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <utility>

namespace vela::test {
namespace {

using namespace nms::clustering;
using nms::StatlibraryErrorCode;

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
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < i; ++j) {
            EXPECT_EQ(matrix(i, j), 7.0);
            i % 2 == 0 ? matrix.Set(i, j, 10.0 * i + j) : matrix.Set(j, i, 10.0 * i + j);
        }
    }
    // The last is more than any allocator gives: 2^61 numbers.
    EXPECT_EQ(matrix.Init(-1, 0.0), StatlibraryErrorCode::InvalidSize);
    EXPECT_EQ(matrix.Init(far, 0.0), StatlibraryErrorCode::OutOfMemory);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(matrix(i, i), 0.0);
        for (int j = 0; j < i; ++j) {
            EXPECT_EQ(matrix(i, j), 10.0 * i + j);
            EXPECT_EQ(matrix(j, i), 10.0 * i + j);
        }
    }
    const DistanceMatrix copy = matrix;
    const DistanceMatrix moved = std::move(matrix);
    EXPECT_EQ(copy(3, 2), 32.0);
    EXPECT_EQ(moved(3, 2), 32.0);
}

struct MissingIsNegative final : nms::types::IMissingValueInfo {
    bool IsMissing(double value) const override { return value < 0.0; }
};

TEST(CreateForClusterObservations, TheInfoObjectAloneSaysWhatIsMissing) {
    const double values[] = {1, 2, 4, -1, kNaN, 3, MissingValue, 3};
    const std::unique_ptr<nms::types::IRectangularArray<double>> table(
        nms::types::MakeRectangularArrayOver(values, 4, 2));
    const MissingIsNegative info;
    DistanceMatrix matrix;
    CreateForClusterObservations(matrix, *table, DistanceEnums::Manhattan, &info);
    EXPECT_EQ(matrix(0, 1), 6.0);
    EXPECT_TRUE(std::isnan(matrix(0, 2)));
    EXPECT_EQ(matrix(0, 3), MissingValue);
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
    EXPECT_EQ(CreateForClusterObservations(matrix, Shape(2, 2), DistanceEnums{}),
              InvalidEnumeration);
    EXPECT_EQ(matrix.RowCount(), 3);
}

}  // namespace
}  // namespace vela::test
