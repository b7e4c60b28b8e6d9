#include "clustering/neighbour_cache.hpp"

#include <algorithm>
#include <limits>

namespace vela::clustering {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

}  // namespace

/// Puts j in its place; with a full list the last candidate drops out, or j itself if it is last.
void NeighbourCache::Candidates::put(double toRow, int j) {
    int at = 0;
    while (at < count && (distance[at] < toRow || (distance[at] == toRow && row[at] > j))) {
        ++at;
    }
    if (at == kMostCandidates) {
        return;
    }
    count = std::min(count + 1, kMostCandidates);
    for (int i = count - 1; i > at; --i) {
        distance[i] = distance[i - 1];
        row[i] = row[i - 1];
    }
    distance[at] = toRow;
    row[at] = j;
}

/// `values[offset + j]` is the distance to row j. Descending rows: an equal distance comes after
/// those that are there, so most equal ones are turned away by one comparison.
void NeighbourCache::Candidates::search(const double* values, std::ptrdiff_t offset,
                                        const ActiveRows& active, std::size_t after) {
    count = 0;
    std::size_t place = active.size();
    while (place > after && count < kMostCandidates) {
        const int j = active[--place];
        if (values[offset + j] <= kInfinity) {
            put(values[offset + j], j);
        }
    }
    if (count < kMostCandidates) {
        bound = kInfinity;
        boundRow = -1;
        return;
    }
    double last = distance[kMostCandidates - 1];
    while (place > after) {
        const int j = active[--place];
        if (values[offset + j] < last) {
            put(values[offset + j], j);
            last = distance[kMostCandidates - 1];
        }
    }
    bound = last;
    boundRow = row[kMostCandidates - 1];
}

void NeighbourCache::Candidates::remove(int j) {
    const int* const found = std::find(row, row + count, j);
    if (found == row + count) {
        return;
    }
    --count;
    for (auto i = found - row; i < count; ++i) {
        distance[i] = distance[i + 1];
        row[i] = row[i + 1];
    }
}

void NeighbourCache::Candidates::insert(double toRow, int j) {
    if (!(toRow < bound || (toRow == bound && j >= boundRow))) {
        return;
    }
    const bool isFull = count == kMostCandidates;
    put(toRow, j);
    if (isFull) {
        bound = distance[kMostCandidates - 1];
        boundRow = row[kMostCandidates - 1];
    }
}

NeighbourCache::NeighbourCache(int rows)
    : m_distance(static_cast<std::size_t>(rows)),
      m_partner(static_cast<std::size_t>(rows)),
      m_reach(static_cast<std::size_t>(rows)),
      m_candidates(static_cast<std::size_t>(rows)) {}

void NeighbourCache::fill(const Condensed& distances, const ActiveRows& active) {
    for (std::size_t place = 0; place < active.size(); ++place) {
        restart(active[place], distances, active, place + 1);
    }
}

Pair NeighbourCache::closest(const Condensed& distances, const ActiveRows& active) const {
    Pair best = {-1, -1, kInfinity};
    for (const int row : active) {
        const double distance = m_distance[static_cast<std::size_t>(row)];
        const int partner = m_partner[static_cast<std::size_t>(row)];
        if (distance > best.distance || partner == row) {
            continue;
        }
        const int lo = std::min(row, partner);
        const int hi = std::max(row, partner);
        if (distance < best.distance || hi > best.hi || (hi == best.hi && lo > best.lo)) {
            best = {lo, hi, distance};
        }
    }
    if (best.lo < 0) {
        best.hi = active.back();
        best.lo = active[active.size() - 2];
        best.distance = distances.at(best.lo, best.hi);
    }
    return best;
}

void NeighbourCache::note_merge(int k, Pair merge, double toMerged, const Condensed& distances,
                                const ActiveRows& active, std::size_t after) {
    const auto row = static_cast<std::size_t>(k);
    Candidates& candidates = m_candidates[row];
    if (k < merge.hi) {
        candidates.remove(merge.hi);
    }
    if (k < merge.lo) {
        candidates.remove(merge.lo);
        candidates.insert(toMerged, merge.lo);
    }
    if (m_partner[row] == merge.lo || m_partner[row] == merge.hi) {
        remember_best(row, distances, active, after);
    } else if (toMerged < m_distance[row]) {
        m_distance[row] = toMerged;
        m_partner[row] = merge.lo;
    }
    update_reach(row);
}

void NeighbourCache::restart(int k, const Condensed& distances, const ActiveRows& active,
                             std::size_t after) {
    const auto row = static_cast<std::size_t>(k);
    m_candidates[row].count = 0;
    m_candidates[row].boundRow = 0;
    remember_best(row, distances, active, after);
    update_reach(row);
}

void NeighbourCache::remember_best(std::size_t k, const Condensed& distances,
                                   const ActiveRows& active, std::size_t after) {
    Candidates& candidates = m_candidates[k];
    const int row = static_cast<int>(k);
    if (candidates.count == 0 && !candidates.are_complete()) {
        candidates.search(distances.values(), distances.offset(row), active, after);
    }
    m_distance[k] = candidates.count > 0 ? candidates.distance[0] : kInfinity;
    m_partner[k] = candidates.count > 0 ? candidates.row[0] : row;
}

void NeighbourCache::update_reach(std::size_t k) {
    m_reach[k] = std::max(m_candidates[k].bound, m_distance[k]);
}

}  // namespace vela::clustering
