#ifndef VELA_CLUSTERING_SPANNING_TREE_HPP
#define VELA_CLUSTERING_SPANNING_TREE_HPP

#include "clustering/condensed.hpp"

#include <cstdint>
#include <vector>

namespace vela::clustering {

/// The merges of single linkage, for each row but the first: the lower row that its cluster is
/// merged into, at which distance, and as which merge of the run.
struct SingleLinkageTree {
    explicit SingleLinkageTree(int rows);

    double height_of(int row) const;

    std::vector<int> into;
    std::vector<std::int64_t> height;  ///< as integers of the same order
    std::vector<int> step;   ///< 0, 1, ...; for row 0, which is never merged, the number of merges
    std::vector<int> order;  ///< the rows but the first, by step
    std::vector<std::int64_t> near;  ///< work space: from the row being added to each cluster
    std::vector<int> later;          ///< work space: rows by step
};

/// Finds the tree in one pass over the distances. False, with the distances untouched, if the
/// heights do not determine the merges: some are equal, or a distance is infinite, NaN or -0.
bool find_single_linkage(const Condensed& distances, SingleLinkageTree* tree);

/// Leaves each distance as the merges in order would have left it.
void apply_single_linkage(const Condensed& distances, SingleLinkageTree* tree);

}  // namespace vela::clustering

#endif
