#ifndef VELA_CLUSTERING_MERGED_DISTANCES_HPP
#define VELA_CLUSTERING_MERGED_DISTANCES_HPP

#include "clustering/condensed.hpp"

#include <vector>

namespace vela::clustering {

/// Leaves the distances as the merges of single linkage, one after another, would have left them.
class MergedDistances {
public:
    explicit MergedDistances(const Condensed& distances);

    /// Allocates nothing.
    void apply(const std::vector<Pair>& merges);

private:
    /// Rows that are taken together.
    static constexpr int kLanes = 8;
    struct Lanes {
        double value[kLanes];
    };

    double* row(int i) const { return m_distances.values() + m_distances.offset(i); }
    double& at(int a, int b);
    void load();
    void store();
    void pass_on(int i, int j);
    void pass_on_column(int j);
    void pass_on_row(int i);

    Condensed m_distances;
    std::vector<int> m_into;       ///< the lower row that a row is merged into
    std::vector<double> m_step;    ///< the merge in which that happens; never, for the first row
    std::vector<int> m_targets;    ///< rows that others are merged into, while before the block
    std::vector<Lanes> m_columns;  ///< distances of each row to the rows of the block
    Lanes m_blockSteps = {};
    std::vector<int> m_inner;  ///< rows of the block that are merged into others of it, downwards
    int m_begin = 0;           ///< of the block
    int m_end = 0;
};

}  // namespace vela::clustering

#endif
