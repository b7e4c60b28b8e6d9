#include "clustering/containers.hpp"
#include "conventions/fp_environment.hpp"
#include "vela/nms/clustering/hierarchical_clustering.hpp"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <numeric>

namespace vela::nms::clustering {
namespace {

using Steps = types::IReadableVector<ClusterStep>;

/// Cluster numbers after the first `merges` steps. A step that names no two rows is passed over: a
/// host may have made the vector.
types::IReadableVector<int>* number_clusters(const Steps& steps, int merges) {
    const std::int64_t rows = std::int64_t{steps.size()} + 1;
    auto members = std::make_unique<vela::clustering::Vector<int>>(
        std::vector<int>(static_cast<std::size_t>(rows)));
    std::vector<int>& numbers = members->values();
    // First, the lower row that each row's cluster was merged into, or the row itself.
    std::iota(numbers.begin(), numbers.end(), 0);
    for (int i = 0; i < merges; ++i) {
        const ClusterStep& step = steps[i];
        if (step.cluster1 >= 0 && step.cluster1 < step.cluster2 && step.cluster2 < rows) {
            numbers[static_cast<std::size_t>(step.cluster2)] = step.cluster1;
        }
    }
    // Lower rows have their numbers already when a row looks there.
    int count = 0;
    for (std::size_t row = 0; row < numbers.size(); ++row) {
        const auto into = static_cast<std::size_t>(numbers[row]);
        numbers[row] = into == row ? ++count : numbers[into];
    }
    return members.release();
}

}  // namespace

types::IReadableVector<int>* FindMembersWithCut(const Steps& steps, double cut) {
    const conventions::QuietArithmetic quiet;
    int merges = 0;
    while (merges < steps.size() && steps[merges].distance <= cut) {
        ++merges;
    }
    return number_clusters(steps, merges);
}

types::IReadableVector<int>* FindMembersWithNumber(const Steps& steps, int count) {
    const int more = count < 1 ? 0 : std::min(count - 1, steps.size());  // clusters beyond one
    return number_clusters(steps, steps.size() - more);
}

}  // namespace vela::nms::clustering
