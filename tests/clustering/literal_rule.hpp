#ifndef VELA_TESTS_CLUSTERING_LITERAL_RULE_HPP
#define VELA_TESTS_CLUSTERING_LITERAL_RULE_HPP

#include "vela/nms/clustering/hierarchical_clustering.hpp"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

namespace vela::test {

/// Hierarchical clustering as the rule says it, without any shortcut: every search looks at every
/// row, at once. The distances come from their formulas, written here for themselves.
class LiteralRule {
    using ClusterStep = nms::clustering::ClusterStep;
    using LinkageEnums = nms::clustering::LinkageEnums;

public:
    LiteralRule(LinkageEnums linkage, nms::clustering::DistanceMatrix* distances)
        : m_linkage(linkage),
          m_distances(*distances),
          m_clusters(static_cast<std::size_t>(distances->RowCount())) {}

    std::vector<ClusterStep> run() {
        const int rows = m_distances.RowCount();
        std::vector<ClusterStep> steps;
        for (int i = 0; i < rows; ++i) {
            search(i);
        }
        for (int merge = 1; merge < rows; ++merge) {
            steps.push_back(choose());
            update_distances(steps.back());
            update_neighbours(steps.back());
        }
        return steps;
    }

private:
    struct Cluster {
        bool isActive = true;
        int size = 1;
        double nearest = 0.0;
        int partner = 0;
    };

    Cluster& at(int i) { return m_clusters[static_cast<std::size_t>(i)]; }

    void search(int i) {
        at(i).nearest = std::numeric_limits<double>::infinity();
        at(i).partner = i;
        for (int j = i + 1; j < m_distances.RowCount(); ++j) {
            const double d = m_distances(i, j);
            if (at(j).isActive &&
                (d < at(i).nearest || (d == at(i).nearest && j > at(i).partner))) {
                at(i).nearest = d;
                at(i).partner = j;
            }
        }
    }

    ClusterStep choose() {
        ClusterStep best = {0.0, std::numeric_limits<double>::infinity(), -1, -1, 0};
        int highest[2] = {-1, -1};
        for (int i = 0; i < m_distances.RowCount(); ++i) {
            if (!at(i).isActive) {
                continue;
            }
            highest[0] = highest[1];
            highest[1] = i;
            const double d = at(i).nearest;
            const int lo = std::min(i, at(i).partner);
            const int hi = std::max(i, at(i).partner);
            if (lo != hi &&
                (d < best.distance ||
                 (d == best.distance &&
                  (hi > best.cluster2 || (hi == best.cluster2 && lo > best.cluster1))))) {
                best = {0.0, d, lo, hi, 0};
            }
        }
        if (best.cluster1 < 0) {
            best = {0.0, m_distances(highest[0], highest[1]), highest[0], highest[1], 0};
        }
        best.size = at(best.cluster1).size + at(best.cluster2).size;
        return best;
    }

    void update_distances(const ClusterStep& step) {
        for (int k = 0; k < m_distances.RowCount(); ++k) {
            if (at(k).isActive && k != step.cluster1 && k != step.cluster2) {
                m_distances.Set(k, step.cluster1, merged_distance(step, k));
            }
        }
        at(step.cluster1).size = step.size;
        at(step.cluster2).isActive = false;
    }

    double merged_distance(const ClusterStep& step, int k) {
        const double ij = step.distance;
        const double ik = m_distances(k, step.cluster1);
        const double jk = m_distances(k, step.cluster2);
        const double i = at(step.cluster1).size;
        const double j = at(step.cluster2).size;
        const double n = step.size;
        const double other = at(k).size;
        switch (m_linkage) {
            case LinkageEnums::Average: return (i * ik + j * jk) / n;
            case LinkageEnums::Single: return std::min(ik, jk);
            case LinkageEnums::Complete: return std::max(ik, jk);
            case LinkageEnums::Ward:
                return ((i + other) * ik + (j + other) * jk - other * ij) / (n + other);
            case LinkageEnums::McQuitty: return (ik + jk) * 0.5;
            case LinkageEnums::Median: return (ik + jk) * 0.5 - ij * 0.25;
            case LinkageEnums::Centroid: return (i * ik + j * jk) / n - i * j * ij / (n * n);
        }
        return 0.0;
    }

    void update_neighbours(const ClusterStep& step) {
        const int lo = step.cluster1;
        const int hi = step.cluster2;
        for (int i = 0; i < m_distances.RowCount(); ++i) {
            if (!at(i).isActive) {
                continue;
            }
            if (i == lo || at(i).partner == lo || at(i).partner == hi) {
                search(i);
            } else if (m_distances(i, lo) < at(i).nearest) {
                at(i).nearest = m_distances(i, lo);
                at(i).partner = lo;
            }
        }
    }

    LinkageEnums m_linkage;
    nms::clustering::DistanceMatrix& m_distances;
    std::vector<Cluster> m_clusters;
};

}  // namespace vela::test

#endif
