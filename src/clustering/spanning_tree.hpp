#ifndef VELA_CLUSTERING_SPANNING_TREE_HPP
#define VELA_CLUSTERING_SPANNING_TREE_HPP

#include "clustering/condensed.hpp"

#include <cstddef>
#include <vector>

namespace vela::clustering {

/// The merges of single linkage from a minimum spanning tree.
class SingleLinkageTree {
public:
    explicit SingleLinkageTree(int rows);

    /// Finds the merges in one pass over the distances; allocates nothing. False if these do not
    /// determine the merges: some heights are equal, or a distance is infinite, NaN, negative or
    /// -0.
    bool find(const Condensed& distances);

    /// In order.
    const std::vector<Pair>& merges() const { return m_merges; }

private:
    void add_row(std::size_t row);
    void update_bounds(std::size_t first);
    bool order_merges();
    int find_lowest(int row);

    // The cluster of each row but the last becomes part of that of row into[j] at height[j]. The
    // row into[j] is before j or the last one.
    std::vector<int> m_into;
    std::vector<double> m_height;
    std::vector<double> m_bound;  ///< no less than the height at which it joins the last row's
    std::vector<double> m_near;   ///< from the row being added to each cluster
    std::vector<int> m_order;     ///< rows by height
    std::vector<int> m_lower;     ///< a lower row of the same cluster, or the row itself
    std::vector<Pair> m_merges;
};

}  // namespace vela::clustering

#endif
