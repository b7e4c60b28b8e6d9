#include "vela/nms/types/make_containers.hpp"
#include "vela/nms/types/shared_ptr.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace vela::test {
namespace {

using namespace nms::types;
using nms::StatlibraryErrorCode;
using nms::clustering::ClusterStep;

template <class T>
void expect_containers_of(const std::vector<T>& source, const T& other,
                          bool (*same)(const T&, const T&)) {
    std::vector<T> values = source;
    const int count = static_cast<int>(values.size());
    IVector<T>* const owned = MakeVector(values.data(), count);
    IReadableVector<T>* const over = MakeVectorOver(values.data(), count);
    // Shared ownership ends these through their virtual destructors.
    const SharedPtr<IRectangularArray<T>> ownedArray(
        MakeRectangularArray(values.data(), 2, count / 2));
    const SharedPtr<IRectangularArray<T>> overArray(
        MakeRectangularArrayOver(values.data(), 2, count / 2));
    values.back() = other;
    EXPECT_EQ(owned->size(), count);
    EXPECT_EQ(over->size(), count);
    EXPECT_TRUE(same((*owned)[count - 1], source.back()));
    EXPECT_TRUE(same((*over)[count - 1], other));
    EXPECT_EQ(ownedArray->RowCount(), 2);
    EXPECT_EQ(ownedArray->ColumnCount(), count / 2);
    EXPECT_TRUE(same((*ownedArray)(1, 0), source[static_cast<std::size_t>(count) / 2]));
    EXPECT_TRUE(same((*ownedArray)(1, count / 2 - 1), source.back()));
    EXPECT_TRUE(same((*overArray)(1, count / 2 - 1), other));

    (*owned)[0] = other;
    EXPECT_EQ(owned->assign(-1, source[0]), StatlibraryErrorCode::InvalidSize);
    EXPECT_EQ(owned->size(), count);
    // Of one of its own elements, with and without new memory.
    for (const int longer : {2 * count, 2}) {
        EXPECT_EQ(owned->assign(longer, (*owned)[0]), StatlibraryErrorCode::Success);
        EXPECT_EQ(owned->size(), longer);
        EXPECT_TRUE(same((*owned)[longer - 1], other));
    }
    DeleteVector(owned);
    DeleteVector(over);
    DeleteVector(static_cast<IReadableVector<T>*>(nullptr));
    DeleteRectangularArray(static_cast<IRectangularArray<T>*>(nullptr));

    const T* const none = nullptr;
    EXPECT_EQ(MakeVector(source.data(), -1), nullptr);
    EXPECT_EQ(MakeVector(none, 1), nullptr);
    EXPECT_EQ(MakeVectorOver(none, 1), nullptr);
    EXPECT_EQ(MakeRectangularArray(none, 1, 1), nullptr);
    EXPECT_EQ(MakeRectangularArrayOver(source.data(), 1, -1), nullptr);
    const SharedPtr<IRectangularArray<T>> empty(MakeRectangularArray(none, 3, 0));
    EXPECT_EQ(empty->RowCount(), 3);
}

TEST(Containers, HoldOrReadTheirElements) {
    expect_containers_of<double>({1.0, 2.0, 3.0, 4.0, 5.0, 6.0}, 9.0,
                                 [](const double& a, const double& b) { return a == b; });
    expect_containers_of<int>({1, 2, 3, 4}, 9, [](const int& a, const int& b) { return a == b; });
    expect_containers_of<ClusterStep>(
        {{1.0, 2.0, 3, 4, 5}, {6.0, 7.0, 8, 9, 10}}, {1.0, 1.0, 1, 1, 1},
        [](const ClusterStep& a, const ClusterStep& b) {
            return a.similarity == b.similarity && a.distance == b.distance &&
                   a.cluster1 == b.cluster1 && a.cluster2 == b.cluster2 && a.size == b.size;
        });
}

}  // namespace
}  // namespace vela::test
