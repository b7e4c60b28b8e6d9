#include "fuzz/exercise.hpp"
#include "vela/vela.hpp"

namespace vela::test {
namespace {

using namespace nms::clustering;
using namespace nms::types;

DistanceMatrix make_distances(Bytes& bytes) {
    DistanceMatrix distances;
    const auto kind = static_cast<int>(bytes.below(9));
    const int rows = static_cast<int>(bytes.below(40));
    if (kind == 8) {
        distances.Init(rows, bytes.number());
        for (int i = 0; i < rows; ++i) {
            for (int j = 0; j < i; ++j) {
                distances.Set(i, j, bytes.number());
            }
        }
        return distances;
    }
    const int columns = static_cast<int>(bytes.below(6));
    const Sample values = make_sample_of(bytes, static_cast<std::uint32_t>(rows * columns));
    const std::unique_ptr<IRectangularArray<double>> table(
        MakeRectangularArrayOver(values.data(), rows, columns));
    if (kind < 6) {
        CreateForClusterObservations(distances, *table, static_cast<DistanceEnums>(2000 + kind));
    } else {
        CreateForClusterVariables(distances, *table, kind == 7);
    }
    return distances;
}

void add_members(const IReadableVector<int>* vector, int rows, Results& results) {
    const std::unique_ptr<const IReadableVector<int>> members(vector);
    require(members->size() == (rows > 0 ? rows : 1));
    for (int i = 0; i < members->size(); ++i) {
        require((*members)[i] >= 1 && (*members)[i] <= i + 1);
        results.add((*members)[i]);
    }
}

}  // namespace

void exercise_clustering(Bytes& bytes, Results& results) {
    DistanceMatrix distances = make_distances(bytes);
    const int rows = distances.RowCount();
    const auto linkage = static_cast<LinkageEnums>(1000 + bytes.below(7));
    const std::unique_ptr<IReadableVector<ClusterStep>> steps(
        RunClustering(linkage, bytes.number(), distances));
    require(steps->size() == (rows > 1 ? rows - 1 : 0));
    for (int i = 0; i < steps->size(); ++i) {
        const ClusterStep& step = (*steps)[i];
        require(0 <= step.cluster1 && step.cluster1 < step.cluster2 && step.cluster2 < rows);
        require(2 <= step.size && step.size <= rows);
        results.add_each(step.similarity, step.distance, step.cluster1, step.cluster2);
    }
    for (int i = 0; i < rows; ++i) {
        for (int j = 0; j < i; ++j) {
            results.add(distances(i, j));
        }
    }
    add_members(FindMembersWithCut(*steps, bytes.number()), rows, results);
    add_members(FindMembersWithNumber(*steps, bytes.next<std::int8_t>()), rows, results);
}

}  // namespace vela::test
