// The run: find the closest pair, merge it, bring the distances and the remembered neighbours up to
// date. The distances of the merged cluster are written over those of its lower row. Time is n^2
// for data whose neighbours are spread over the rows, memory beside the matrix proportional to n.

#include "clustering/condensed.hpp"
#include "clustering/containers.hpp"
#include "clustering/linkage.hpp"
#include "clustering/merged_distances.hpp"
#include "clustering/neighbour_cache.hpp"
#include "clustering/spanning_tree.hpp"
#include "conventions/fp_environment.hpp"
#include "vela/nms/clustering/hierarchical_clustering.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <limits>
#include <memory>
#include <vector>

namespace vela::clustering {
namespace {

using nms::clustering::ClusterStep;
using nms::clustering::LinkageEnums;

/// The distance of similarity 0.
double reference_distance(const Condensed& distances, double asked) {
    constexpr double kLargest = std::numeric_limits<double>::max();
    if (asked > 0.0 && asked <= kLargest) {
        return asked;
    }
    const double* const values = distances.values();
    double largest = 0.0;
    for (std::size_t i = 0; i < pair_count(distances.rows()); ++i) {
        if (values[i] > largest && values[i] <= kLargest) {
            largest = values[i];
        }
    }
    return largest > 0.0 ? largest : 1.0;
}

/// The list of steps being made. All its memory is there from the beginning.
class StepList {
public:
    StepList(const Condensed& distances, double reference)
        : m_steps(std::make_unique<Vector<ClusterStep>>(std::vector<ClusterStep>())),
          m_reference(reference_distance(distances, reference)) {
        m_steps->values().reserve(static_cast<std::size_t>(std::max(distances.rows() - 1, 0)));
    }

    void add(Pair pair, int size) {
        const double similarity = (1.0 - pair.distance / m_reference) * 100.0;
        m_steps->values().push_back({similarity, pair.distance, pair.lo, pair.hi, size});
    }

    Vector<ClusterStep>* release() { return m_steps.release(); }

private:
    std::unique_ptr<Vector<ClusterStep>> m_steps;
    double m_reference;
};

/// How far to look ahead where the distances to one row lie a row apart in memory.
constexpr std::size_t kRowsAhead = 16;

template <class Linkage>
class Run {
public:
    explicit Run(const Condensed& distances)
        : m_distances(distances),
          m_cache(distances.rows()),
          m_clusters(static_cast<std::size_t>(distances.rows())),
          m_active(m_clusters.size()) {}

    /// Allocates nothing.
    void merge_all(StepList* steps) {
        for (std::size_t row = 0; row < m_clusters.size(); ++row) {
            m_active[row] = static_cast<int>(row);
            m_clusters[row].id = static_cast<int>(row);
        }
        m_cache.fill(m_distances, m_active);
        while (m_active.size() > 1) {
            const Pair pair = m_cache.closest(m_distances, m_active);
            merge(pair);
            steps->add(pair, cluster(pair.lo).size);
        }
    }

private:
    Cluster& cluster(int row) { return m_clusters[static_cast<std::size_t>(row)]; }

    void merge(Pair pair) {
        const Cluster first = cluster(pair.lo);
        const Cluster second = cluster(pair.hi);
        const Cluster merged = {pair.lo, pair.distance, first.size + second.size, &first, &second};
        const auto lo = std::lower_bound(m_active.begin(), m_active.end(), pair.lo);
        const auto hi = m_active.erase(std::lower_bound(lo, m_active.end(), pair.hi));
        const auto afterLo = static_cast<std::size_t>(lo - m_active.begin()) + 1;
        const auto afterHi = static_cast<std::size_t>(hi - m_active.begin());
        update_rows_before_lo(pair, merged, afterLo - 1);
        update_rows_between(pair, merged, afterLo, afterHi);
        update_rows_after_hi(pair, merged, afterHi);
        m_cache.restart(pair.lo, m_distances, m_active, afterLo);
        cluster(pair.lo) = {merged.id, merged.distance, merged.size};
    }

    // Three loops, by where the distances of row k to lo and hi lie.

    void update_rows_before_lo(Pair pair, const Cluster& merged, std::size_t end) {
        double* const values = m_distances.values();
        for (std::size_t place = 0; place < end; ++place) {
            if (place + kRowsAhead < end) {
                const std::ptrdiff_t ahead = m_distances.offset(m_active[place + kRowsAhead]);
                prefetch(values + (ahead + pair.lo));
                prefetch(values + (ahead + pair.hi));
            }
            const std::ptrdiff_t row = m_distances.offset(m_active[place]);
            update(place, pair, merged, &values[row + pair.lo], values[row + pair.hi]);
        }
    }

    void update_rows_between(Pair pair, const Cluster& merged, std::size_t begin, std::size_t end) {
        double* const values = m_distances.values();
        const std::ptrdiff_t rowLo = m_distances.offset(pair.lo);
        for (std::size_t place = begin; place < end; ++place) {
            if (place + kRowsAhead < end) {
                prefetch(values + (m_distances.offset(m_active[place + kRowsAhead]) + pair.hi));
            }
            const int k = m_active[place];
            update(place, pair, merged, &values[rowLo + k],
                   values[m_distances.offset(k) + pair.hi]);
        }
    }

    void update_rows_after_hi(Pair pair, const Cluster& merged, std::size_t begin) {
        double* const values = m_distances.values();
        const std::ptrdiff_t rowLo = m_distances.offset(pair.lo);
        const std::ptrdiff_t rowHi = m_distances.offset(pair.hi);
        for (std::size_t place = begin; place < m_active.size(); ++place) {
            const int k = m_active[place];
            update(place, pair, merged, &values[rowLo + k], values[rowHi + k]);
        }
    }

    void update(std::size_t place, Pair pair, const Cluster& merged, double* toLo, double toHi) {
        const int k = m_active[place];
        const double before = *toLo;
        const double after = m_linkage.update(pair.distance, before, toHi, merged, cluster(k).size);
        *toLo = after;
        if (m_cache.is_concerned(k, before, toHi, after)) {
            m_cache.note_merge(k, pair, after, m_distances, m_active, place + 1);
        }
    }

    Linkage m_linkage;
    Condensed m_distances;
    NeighbourCache m_cache;
    std::vector<Cluster> m_clusters;  ///< by row
    ActiveRows m_active;
};

template <class Linkage>
void run_with(const Condensed& distances, StepList* steps) {
    Run<Linkage> run(distances);
    run.merge_all(steps);
}

/// False, and nothing done, where the spanning tree leaves a choice.
bool run_along_tree(const Condensed& distances, StepList* steps) {
    SingleLinkageTree tree(distances.rows());
    MergedDistances merged(distances);
    std::vector<int> sizes(static_cast<std::size_t>(distances.rows()), 1);
    if (!tree.find(distances)) {
        return false;
    }
    for (const Pair& pair : tree.merges()) {
        int& size = sizes[static_cast<std::size_t>(pair.lo)];
        size += sizes[static_cast<std::size_t>(pair.hi)];
        steps->add(pair, size);
    }
    merged.apply(tree.merges());
    return true;
}

void run_single(const Condensed& distances, StepList* steps) {
    if (distances.rows() < 2 || !run_along_tree(distances, steps)) {
        run_with<SingleLinkage>(distances, steps);
    }
}

using Method = void (*)(const Condensed& distances, StepList* steps);

Method find_method(LinkageEnums linkage) {
    switch (linkage) {
        case LinkageEnums::Average: return run_with<AverageLinkage>;
        case LinkageEnums::Single: return run_single;
        case LinkageEnums::Complete: return run_with<CompleteLinkage>;
        case LinkageEnums::Ward: return run_with<WardLinkage>;
        case LinkageEnums::McQuitty: return run_with<McQuittyLinkage>;
        case LinkageEnums::Median: return run_with<MedianLinkage>;
        case LinkageEnums::Centroid: return run_with<CentroidLinkage>;
    }
    return nullptr;
}

nms::types::IReadableVector<ClusterStep>* run(LinkageEnums linkage, double reference,
                                              const Condensed& distances) {
    const conventions::QuietArithmetic quiet;
    const Method method = find_method(linkage);
    if (method == nullptr) {
        std::fputs("invalid linkage\n", stdout);
        std::fflush(stdout);
        return nullptr;
    }
    StepList steps(distances, reference);
    method(distances, &steps);
    return steps.release();
}

}  // namespace
}  // namespace vela::clustering

namespace vela::nms::clustering {

types::IReadableVector<ClusterStep>* RunClustering(LinkageEnums linkage, double reference,
                                                   DistanceMatrix& distances) {
    return vela::clustering::run(linkage, reference,
                                 vela::clustering::MatrixAccess::condensed(distances));
}

}  // namespace vela::nms::clustering
