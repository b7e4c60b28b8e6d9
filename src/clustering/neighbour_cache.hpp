#ifndef VELA_CLUSTERING_NEIGHBOUR_CACHE_HPP
#define VELA_CLUSTERING_NEIGHBOUR_CACHE_HPP

#include "clustering/condensed.hpp"

#include <cstddef>
#include <vector>

namespace vela::clustering {

/// The rows that still hold a cluster, in increasing order.
using ActiveRows = std::vector<int>;

/// The nearest neighbour that each active row remembers, and with it the rule for equal distances.
///
/// A row's neighbour is, when it is looked for, the nearest row after it, the last one of equally
/// near ones. It is kept until one of the two is merged, when it is looked for anew, or until the
/// distance to a newly merged cluster, which may stand before the row, is strictly smaller. Among
/// equal distances the outcome depends on when each row last looked, so no search may be put off.
///
/// What makes the searches cheap is that each row also lists its few best candidates in the order
/// in which a search would choose them: distance up, row down. The list is complete up to its
/// bound, so that its head is what a search of all rows would find; only a row whose list has run
/// empty is searched in full. In random data of 5000 rows that happens to every second row, once.
///
/// NaN is never a candidate; an infinite distance is one. A row without a candidate remembers
/// itself at +infinity.
class NeighbourCache {
public:
    explicit NeighbourCache(int rows);

    /// Searches every row of `active`, which must be all rows.
    void fill(const Condensed& distances, const ActiveRows& active);

    /// The closest remembered pair, of equal ones that with the highest hi, then the highest lo;
    /// if only NaN distances are left, the two highest rows.
    Pair closest(const Condensed& distances, const ActiveRows& active) const;

    /// Whether a merge can change what row k remembers or lists: from its distances to the two
    /// parts before and to the merged cluster after the merge. This is asked for every pair.
    bool is_concerned(int k, double toLo, double toHi, double toMerged) const {
        const double reach = m_reach[static_cast<std::size_t>(k)];
        return toLo <= reach || toHi <= reach || toMerged <= reach;
    }

    /// Brings row k up to date after lo and hi were merged at lo. `after` is the place in `active`,
    /// which no longer has hi, of the first row after k.
    void note_merge(int k, Pair merge, double toMerged, const Condensed& distances,
                    const ActiveRows& active, std::size_t after);

    /// Forgets what row k remembers and lists, and searches it.
    void restart(int k, const Condensed& distances, const ActiveRows& active, std::size_t after);

private:
    static constexpr int kMostCandidates = 8;  // 4 search three times as often, 16 cost as much

    /// The best candidates of a row, and the last place in their order up to which the list has
    /// all.
    struct Candidates {
        double distance[kMostCandidates];
        int row[kMostCandidates];
        int count;
        int boundRow;
        double bound;

        bool are_complete() const { return boundRow < 0; }
        void search(const double* values, std::ptrdiff_t offset, const ActiveRows& active,
                    std::size_t after);
        void remove(int j);
        void insert(double toRow, int j);

    private:
        void put(double toRow, int j);
    };

    void remember_best(std::size_t k, const Condensed& distances, const ActiveRows& active,
                       std::size_t after);
    void update_reach(std::size_t k);

    std::vector<double> m_distance;  ///< to the remembered row
    std::vector<int> m_partner;
    std::vector<double> m_reach;  ///< what is_concerned() compares with: all that matters is nearer
    std::vector<Candidates> m_candidates;
};

}  // namespace vela::clustering

#endif
