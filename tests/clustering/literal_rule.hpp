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
        : m_linkage(linkage), m_distances(*distances) {
        const auto rows = static_cast<std::size_t>(m_distances.RowCount());
        m_isActive.assign(rows, true);
        m_size.assign(rows, 1);
        m_nearest.assign(rows, 0.0);
        m_partner.assign(rows, 0);
    }

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
    bool is_active(int i) const { return m_isActive[static_cast<std::size_t>(i)]; }
    int& size(int i) { return m_size[static_cast<std::size_t>(i)]; }
    double& nearest(int i) { return m_nearest[static_cast<std::size_t>(i)]; }
    int& partner(int i) { return m_partner[static_cast<std::size_t>(i)]; }

    void search(int i) {
        nearest(i) = std::numeric_limits<double>::infinity();
        partner(i) = i;
        for (int j = i + 1; j < m_distances.RowCount(); ++j) {
            const double d = m_distances(i, j);
            if (is_active(j) && (d < nearest(i) || (d == nearest(i) && j > partner(i)))) {
                nearest(i) = d;
                partner(i) = j;
            }
        }
    }

    ClusterStep choose() {
        ClusterStep best = {0.0, std::numeric_limits<double>::infinity(), -1, -1, 0};
        int highest[2] = {-1, -1};
        for (int i = 0; i < m_distances.RowCount(); ++i) {
            if (!is_active(i)) {
                continue;
            }
            highest[0] = highest[1];
            highest[1] = i;
            const double d = nearest(i);
            const int lo = std::min(i, partner(i));
            const int hi = std::max(i, partner(i));
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
        best.size = size(best.cluster1) + size(best.cluster2);
        return best;
    }

    void update_distances(const ClusterStep& step) {
        for (int k = 0; k < m_distances.RowCount(); ++k) {
            if (is_active(k) && k != step.cluster1 && k != step.cluster2) {
                m_distances.Set(k, step.cluster1, merged_distance(step, k));
            }
        }
        size(step.cluster1) = step.size;
        m_isActive[static_cast<std::size_t>(step.cluster2)] = false;
    }

    double merged_distance(const ClusterStep& step, int k) {
        const double ij = step.distance;
        const double ik = m_distances(k, step.cluster1);
        const double jk = m_distances(k, step.cluster2);
        const double i = size(step.cluster1);
        const double j = size(step.cluster2);
        const double n = step.size;
        const double other = size(k);
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
            if (!is_active(i)) {
                continue;
            }
            if (i == lo || partner(i) == lo || partner(i) == hi) {
                search(i);
            } else if (m_distances(i, lo) < nearest(i)) {
                nearest(i) = m_distances(i, lo);
                partner(i) = lo;
            }
        }
    }

    LinkageEnums m_linkage;
    nms::clustering::DistanceMatrix& m_distances;
    std::vector<bool> m_isActive;
    std::vector<int> m_size;
    std::vector<double> m_nearest;
    std::vector<int> m_partner;
};

}  // namespace vela::test

#endif
