// Every allocation of the clustering functions fails in turn: the code says so or std::bad_alloc is
// thrown, arguments are as they were, and nothing leaks.

#include "support/failing_new.hpp"
#include "vela/nms/clustering/hierarchical_clustering.hpp"
#include "vela/nms/types/make_containers.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <utility>

namespace vela::test {
namespace {

using namespace nms::clustering;
using namespace nms::types;
using nms::StatlibraryErrorCode;

/// Calls with allocation 0, 1, ... failing until one succeeds.
void fail_each_allocation(const char* name, const std::function<bool()>& succeeds) {
    for (int failing = 0; failing < 100; ++failing) {
        const long before = live_allocations();
        bool succeeded = false;
        try {
            const FailingNew fail(failing);
            succeeded = succeeds();
        } catch (const std::bad_alloc&) {
        }
        EXPECT_EQ(live_allocations(), before) << name << " " << failing;
        if (succeeded) {
            EXPECT_GT(failing, 0) << name << " allocates nothing";
            return;
        }
    }
    ADD_FAILURE() << name << " never succeeds";
}

DistanceMatrix make_matrix(int slope) {
    DistanceMatrix matrix;
    matrix.Init(20, 1.0);
    for (int i = 0; i < 20; ++i) {
        for (int j = 0; j < i; ++j) {
            matrix.Set(i, j, slope * (100.0 * i + j));
        }
    }
    return matrix;
}

TEST(ClusteringAllocation, LeavesTheMatrixAndLeaksNothing) {
    for (const DistanceMatrix& source : {make_matrix(0), make_matrix(1)}) {  // ties, and none
        for (int linkage = 1000; linkage <= 1006; ++linkage) {
            DistanceMatrix matrix = source;
            fail_each_allocation("RunClustering", [&] {
                for (int i = 0; i < 20; ++i) {
                    EXPECT_EQ(matrix(i, 7), source(i, 7));  // after the failures before this one
                }
                delete RunClustering(static_cast<LinkageEnums>(linkage), 1.0, matrix);
                return true;
            });
        }
    }
}

TEST(ClusteringAllocation, BadAllocPropagatesOrTheCodeReportsIt) {
    using enum StatlibraryErrorCode;
    const double values[] = {1.0, 2.0, 4.0, 5.0, 5.0, 7.0};
    const int numbers[] = {1, 2};
    const ClusterStep steps[] = {{0.0, 1.0, 0, 1, 2}};
    const DistanceMatrix matrix = make_matrix(1);
    const std::unique_ptr<IReadableVector<ClusterStep>> vector(MakeVectorOver(steps, 1));
    const std::unique_ptr<IRectangularArray<double>> table(MakeRectangularArrayOver(values, 3, 2));
    const auto deleted = [](const auto* made) { return delete made, true; };
    const auto filled = [](auto call) {
        DistanceMatrix made;
        const StatlibraryErrorCode code = call(made);
        EXPECT_EQ(made.RowCount() == 0, code == OutOfMemory);
        return code == Success;
    };
    const std::pair<const char*, std::function<bool()>> calls[] = {
        {"FindMembersWithCut", [&] { return deleted(FindMembersWithCut(*vector, 1.0)); }},
        {"FindMembersWithNumber", [&] { return deleted(FindMembersWithNumber(*vector, 1)); }},
        {"DistanceMatrix", [&] { return deleted(new DistanceMatrix(matrix)); }},
        {"MakeVector", [&] { return deleted(MakeVector(values, 2)); }},
        {"MakeVector of int", [&] { return deleted(MakeVector(numbers, 2)); }},
        {"MakeVector of ClusterStep", [&] { return deleted(MakeVector(steps, 1)); }},
        {"MakeRectangularArray", [&] { return deleted(MakeRectangularArray(values, 1, 2)); }},
        {"MakeRectangularArrayOver",
         [&] { return deleted(MakeRectangularArrayOver(values, 1, 2)); }},
        {"MakeVectorOver", [&] { return deleted(MakeVectorOver(values, 2)); }},
        {"Init", [&] { return filled([](auto& made) { return made.Init(10, 1.0); }); }},
        {"CreateForClusterObservations",
         [&] {
             return filled([&](auto& made) {
                 return CreateForClusterObservations(made, *table, DistanceEnums::Pearson);
             });
         }},
        {"CreateForClusterVariables", [&] {
             return filled(
                 [&](auto& made) { return CreateForClusterVariables(made, *table, true); });
         }}};
    for (const auto& [name, call] : calls) {
        fail_each_allocation(name, call);
    }
    const std::unique_ptr<IVector<double>> assigned(MakeVector(values, 2));
    const FailingNew fail(0);
    EXPECT_EQ(assigned->assign(1000, 3.0), OutOfMemory);
    EXPECT_EQ(assigned->size(), 2);
    EXPECT_EQ((*assigned)[1], 2.0);
}

}  // namespace
}  // namespace vela::test
