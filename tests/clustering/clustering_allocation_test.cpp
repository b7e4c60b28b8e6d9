// Every allocation of the clustering functions fails in turn: the code says so or std::bad_alloc is
// thrown, arguments are as they were, and nothing leaks.

#include "support/failing_new.hpp"
#include "vela/nms/clustering/hierarchical_clustering.hpp"
#include "vela/nms/types/make_containers.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>

namespace vela::test {
namespace {

using namespace nms::clustering;
using namespace nms::types;
using nms::StatlibraryErrorCode;

/// Calls with allocation 0, 1, ... failing until one succeeds; returns how many failed.
template <class Call>
int fail_each_allocation(const char* name, Call call) {
    for (int failing = 0; failing < 100; ++failing) {
        const long before = live_allocations();
        const bool succeeded = call(failing);
        EXPECT_EQ(live_allocations(), before) << name << " " << failing;
        if (succeeded) {
            return failing;
        }
    }
    ADD_FAILURE() << name << " never succeeds";
    return 0;
}

template <class Make>
bool makes_and_deletes(int failing, Make make) {
    try {
        const FailingNew fail(failing);
        delete make();
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

template <class T>
void containers_propagate_bad_alloc() {
    const T values[2] = {};
    const std::function<bool(int)> calls[] = {
        [&](int n) { return makes_and_deletes(n, [&] { return MakeVector(values, 2); }); },
        [&](int n) { return makes_and_deletes(n, [&] { return MakeVectorOver(values, 2); }); },
        [&](int n) {
            return makes_and_deletes(n, [&] { return MakeRectangularArray(values, 1, 2); });
        },
        [&](int n) {
            return makes_and_deletes(n, [&] { return MakeRectangularArrayOver(values, 1, 2); });
        }};
    for (const auto& call : calls) {
        EXPECT_GT(fail_each_allocation("containers", call), 0);
    }
}

TEST(ClusteringAllocation, BadAllocPropagatesAndLeaksNothing) {
    DistanceMatrix ties;
    ties.Init(20, 1.0);
    DistanceMatrix distinct;
    distinct.Init(20, 0.0);
    for (int i = 0; i < 20; ++i) {
        for (int j = 0; j < i; ++j) {
            distinct.Set(i, j, 100.0 * i + j);
        }
    }
    for (const DistanceMatrix& source : {ties, distinct}) {
        for (int linkage = 1000; linkage <= 1006; ++linkage) {
            DistanceMatrix matrix = source;
            const int failed = fail_each_allocation("RunClustering", [&](int failing) {
                const bool succeeded = makes_and_deletes(failing, [&] {
                    return RunClustering(static_cast<LinkageEnums>(linkage), 1.0, matrix);
                });
                for (int i = 0; !succeeded && i < 20; ++i) {
                    EXPECT_EQ(matrix(i, 7), source(i, 7));
                }
                return succeeded;
            });
            EXPECT_GT(failed, 0);
        }
    }
    const ClusterStep steps[] = {{0.0, 1.0, 0, 1, 2}};
    const std::unique_ptr<IReadableVector<ClusterStep>> vector(MakeVectorOver(steps, 1));
    const std::function<bool(int)> calls[] = {
        [&](int n) {
            return makes_and_deletes(n, [&] { return FindMembersWithCut(*vector, 1.0); });
        },
        [&](int n) {
            return makes_and_deletes(n, [&] { return FindMembersWithNumber(*vector, 1); });
        },
        [&](int n) {
            return makes_and_deletes(
                n, [&] { return std::make_unique<DistanceMatrix>(ties).release(); });
        }};
    for (const auto& call : calls) {
        EXPECT_GT(fail_each_allocation("members and copies", call), 0);
    }
    containers_propagate_bad_alloc<double>();
    containers_propagate_bad_alloc<int>();
    containers_propagate_bad_alloc<ClusterStep>();
}

TEST(ClusteringAllocation, CodesReportItAndArgumentsAreAsTheyWere) {
    const double values[] = {1.0, 2.0, 4.0, 5.0, 5.0, 7.0};
    const std::unique_ptr<IRectangularArray<double>> table(MakeRectangularArrayOver(values, 3, 2));
    using Call = std::function<StatlibraryErrorCode(DistanceMatrix&)>;
    const Call calls[] = {
        [](DistanceMatrix& matrix) { return matrix.Init(10, 1.0); },
        [&](DistanceMatrix& matrix) {
            return CreateForClusterObservations(matrix, *table, DistanceEnums::Euclidean);
        },
        [&](DistanceMatrix& matrix) {
            return CreateForClusterObservations(matrix, *table, DistanceEnums::Pearson);
        },
        [&](DistanceMatrix& matrix) { return CreateForClusterVariables(matrix, *table, true); }};
    for (const Call& call : calls) {
        EXPECT_GT(fail_each_allocation("codes",
                                       [&](int failing) {
                                           DistanceMatrix matrix;
                                           const FailingNew fail(failing);
                                           const auto code = call(matrix);
                                           EXPECT_EQ(matrix.RowCount() == 0,
                                                     code == StatlibraryErrorCode::OutOfMemory);
                                           return code == StatlibraryErrorCode::Success;
                                       }),
                  0);
    }
    const std::unique_ptr<IVector<double>> vector(MakeVector(values, 2));
    const FailingNew fail(0);
    EXPECT_EQ(vector->assign(1000, 3.0), StatlibraryErrorCode::OutOfMemory);
    EXPECT_EQ(vector->size(), 2);
    EXPECT_EQ((*vector)[1], 2.0);
}

}  // namespace
}  // namespace vela::test
