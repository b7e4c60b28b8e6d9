// The library against expected values of independent origin: tests/data/clustering.csv.

#include "support/reference_cases.hpp"
#include "vela/nms/clustering/hierarchical_clustering.hpp"
#include "vela/nms/types/make_containers.hpp"

#include <gtest/gtest.h>

#include <memory>

namespace vela::test {
namespace {

using namespace nms::clustering;
using Steps = std::unique_ptr<nms::types::IReadableVector<ClusterStep>>;

Steps run_steps(const ReferenceCase& c, Results& r) {
    DistanceMatrix matrix;
    matrix.Init(c.integer("rows"), 0.0);
    const double* next = c.x();
    for (int i = 0; i < matrix.RowCount(); ++i) {
        for (int j = 0; j < i; ++j) {
            matrix.Set(i, j, *next++);
        }
    }
    Steps steps(RunClustering(static_cast<LinkageEnums>(c.integer("linkage")),
                              c.has("reference") ? c.get("reference") : 0.0, matrix));
    for (int i = 0; i < steps->size(); ++i) {
        const ClusterStep& step = (*steps)[i];
        r["similarity"].push_back(step.similarity);
        r["distance"].push_back(step.distance);
        r["cluster1"].push_back(step.cluster1);
        r["cluster2"].push_back(step.cluster2);
        r["size"].push_back(step.size);
    }
    return steps;
}

void find_members(const ReferenceCase& c, Results& r) {
    const Steps steps = run_steps(c, r);
    const std::unique_ptr<nms::types::IReadableVector<int>> members(
        c.has("cut") ? FindMembersWithCut(*steps, c.get("cut"))
                     : FindMembersWithNumber(*steps, c.integer("count")));
    for (int i = 0; i < members->size(); ++i) {
        r["members"].push_back((*members)[i]);
    }
}

void run_distances(const ReferenceCase& c, Results& r) {
    const int columns = c.integer("columns");
    const std::unique_ptr<nms::types::IRectangularArray<double>> table(
        nms::types::MakeRectangularArrayOver(c.x(), static_cast<int>(c.n()) / columns, columns));
    DistanceMatrix matrix;
    const auto status = c.has("absolute")
                            ? CreateForClusterVariables(matrix, *table, c.get("absolute") != 0.0)
                            : CreateForClusterObservations(
                                  matrix, *table, static_cast<DistanceEnums>(c.integer("kind")));
    r.value("status") = static_cast<double>(status);
    r.value("rows") = matrix.RowCount();
    for (int i = 0; i < matrix.RowCount(); ++i) {
        for (int j = 0; j < i; ++j) {
            r["distance"].push_back(matrix(i, j));
        }
    }
}

TEST(Clustering, ReferenceCases) {
    check_reference_cases("clustering.csv",
                          {{"RunClustering", [](auto& c, auto& r) { run_steps(c, r); }},
                           {"FindMembersWithCut", find_members},
                           {"FindMembersWithNumber", find_members},
                           {"CreateForClusterObservations", run_distances},
                           {"CreateForClusterVariables", run_distances}});
}

}  // namespace
}  // namespace vela::test
