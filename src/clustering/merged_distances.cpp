// Of the rows i and j of a pair, one is merged first. Their distance is then final, and it is
// passed on, as a minimum, to the pair of the row that the one is merged into and the other. With i
// from the last row to the first, and for each i the rows j > i from the last to the first, every
// distance is final when it is passed on, and the memory is read row by row, which it would not be
// with the merges one after another.
//
// Which row of a pair is merged first is anyone's guess, and a wrong guess of the processor costs
// more than all else that is done for a pair. Therefore eight rows i are taken together, with the
// eight distances to a row j side by side: what they pass on, if j is merged first, goes to eight
// neighbours, and minima and choices need no jump.
//
// Two things keep these loops free of jumps: std::isless, as < may trap, and that nothing with a
// destructor lives where they stand, to which each of their loads would have to be able to unwind.

#include "clustering/merged_distances.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace vela::clustering {
namespace {

/// to[i] = min(to[i], from[i]) where `own` comes before step[i].
inline void take_smaller(const double* from, const double* step, double own, std::ptrdiff_t count,
                         double* to) {
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        const double passed = from[i];
        const double there = to[i];
        const double other = step[i];
        const double least = std::isless(passed, there) ? passed : there;
        to[i] = std::isless(own, other) ? least : there;
    }
}

}  // namespace

MergedDistances::MergedDistances(const Condensed& distances)
    : m_distances(distances),
      m_into(static_cast<std::size_t>(distances.rows())),
      m_step(m_into.size()),
      m_columns(m_into.size()) {
    m_targets.reserve(m_into.size());
    m_inner.reserve(kLanes);
}

void MergedDistances::apply(const std::vector<Pair>& merges) {
    const int rows = m_distances.rows();
    m_step[0] = static_cast<double>(rows);
    m_targets.clear();
    for (std::size_t i = 0; i < merges.size(); ++i) {
        m_into[static_cast<std::size_t>(merges[i].hi)] = merges[i].lo;
        m_step[static_cast<std::size_t>(merges[i].hi)] = static_cast<double>(i);
        m_targets.push_back(merges[i].lo);
    }
    std::sort(m_targets.begin(), m_targets.end());
    m_targets.erase(std::unique(m_targets.begin(), m_targets.end()), m_targets.end());
    for (m_begin = (rows - 1) / kLanes * kLanes; m_begin >= 0; m_begin -= kLanes) {
        m_end = std::min(m_begin + kLanes, rows);
        load();
        for (int j = rows - 1; j >= m_end; --j) {
            pass_on_column(j);
        }
        for (int j = m_end - 1; j > m_begin; --j) {
            for (int i = j - 1; i >= m_begin; --i) {
                pass_on(i, j);
            }
        }
        store();
    }
}

/// The distance of two rows, at least one of them in the block.
double& MergedDistances::at(int a, int b) {
    const int lo = std::min(a, b);
    const int hi = std::max(a, b);
    return lo >= m_begin ? m_columns[static_cast<std::size_t>(hi)].value[lo - m_begin]
                         : m_columns[static_cast<std::size_t>(lo)].value[hi - m_begin];
}

void MergedDistances::load() {
    while (!m_targets.empty() && m_targets.back() >= m_begin) {
        m_targets.pop_back();
    }
    for (const int k : m_targets) {
        std::copy(row(k) + m_begin, row(k) + m_end, m_columns[static_cast<std::size_t>(k)].value);
    }
    m_inner.clear();
    const double* rows[kLanes] = {};
    for (int i = m_end - 1; i >= m_begin; --i) {
        if (i > 0 && m_into[static_cast<std::size_t>(i)] >= m_begin) {
            m_inner.push_back(i);
        }
        rows[i - m_begin] = row(i);
        m_blockSteps.value[i - m_begin] = m_step[static_cast<std::size_t>(i)];
        for (int j = i + 1; j < m_end; ++j) {
            at(i, j) = row(i)[j];
        }
    }
    for (int j = m_end; j < m_distances.rows(); ++j) {  // the block is full if there is one
        for (int lane = 0; lane < kLanes; ++lane) {
            m_columns[static_cast<std::size_t>(j)].value[lane] = rows[lane][j];
        }
    }
}

void MergedDistances::store() {
    for (const int k : m_targets) {
        const double* const values = m_columns[static_cast<std::size_t>(k)].value;
        std::copy(values, values + (m_end - m_begin), row(k) + m_begin);
    }
    double* rows[kLanes] = {};
    for (int i = m_end - 1; i >= m_begin; --i) {
        rows[i - m_begin] = row(i);
        for (int j = i + 1; j < m_end; ++j) {
            row(i)[j] = at(i, j);
        }
    }
    for (int j = m_end; j < m_distances.rows(); ++j) {
        for (int lane = 0; lane < kLanes; ++lane) {
            rows[lane][j] = m_columns[static_cast<std::size_t>(j)].value[lane];
        }
    }
    for (int i = m_end - 1; i >= m_begin; --i) {
        if (m_into[static_cast<std::size_t>(i)] < m_begin) {
            pass_on_row(i);
        }
    }
}

/// Passes on the distance of the rows i < j, i in the block. What goes to a row before the block
/// and a row behind it is left to pass_on_row().
void MergedDistances::pass_on(int i, int j) {
    const bool isFirst = m_step[static_cast<std::size_t>(i)] < m_step[static_cast<std::size_t>(j)];
    const int into = m_into[static_cast<std::size_t>(isFirst ? i : j)];
    const int other = isFirst ? j : i;
    if (into != other && (into >= m_begin || other < m_end)) {
        double& target = at(into, other);
        target = std::min(target, at(i, j));
    }
}

/// Passes on the distances of all rows of the block to row j behind it.
void MergedDistances::pass_on_column(int j) {
    const double step = m_step[static_cast<std::size_t>(j)];
    double* const column = m_columns[static_cast<std::size_t>(j)].value;
    for (const int i : m_inner) {
        double& target = column[m_into[static_cast<std::size_t>(i)] - m_begin];
        const double passed = m_blockSteps.value[i - m_begin] < step ? column[i - m_begin] : target;
        target = std::isless(passed, target) ? passed : target;
    }
    const int into = m_into[static_cast<std::size_t>(j)];
    if (into >= m_begin && into < m_end) {
        for (int i = m_end - 1; i >= m_begin; --i) {
            pass_on(i, j);
        }
        return;
    }
    Lanes passed = m_columns[static_cast<std::size_t>(into)];
    take_smaller(column, m_blockSteps.value, step, kLanes, passed.value);
    m_columns[static_cast<std::size_t>(into)] = passed;
}

/// Passes on the distances of row i of the block to the rows behind it that are merged later.
void MergedDistances::pass_on_row(int i) {
    const auto own = static_cast<std::size_t>(i);
    take_smaller(row(i) + m_end, m_step.data() + m_end, m_step[own], m_distances.rows() - m_end,
                 row(m_into[own]) + m_end);
}

}  // namespace vela::clustering
