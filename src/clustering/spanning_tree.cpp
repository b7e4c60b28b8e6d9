// Single linkage without the search for the closest pair: its heights are the edges of a minimum
// spanning tree. As long as these differ there is one pair at each height, whatever the rule for
// equal distances, so any method gives the same merges bit for bit: nothing is computed, only
// chosen. Equal heights leave a choice that depends on the history, and so does a zero of either
// sign, equal to the other but not the same; they are left to the general run, and with them
// whatever is no distance.
//
// The tree is found by Sibson (1973), SLINK, Computer Journal 16, with the rows taken from the last
// to the first: each row's distances then lie one after another in memory. Two things differ. His
// representation names the whole by the row that came last, which renames most clusters with every
// row; here the last row keeps that name, and a row whose target has sunk to its own height or
// below is corrected when it is next looked at. And a distance greater than the height at which a
// row joins the cluster of the last row can matter to that cluster only: most distances are done
// with in one comparison.

#include "clustering/spanning_tree.hpp"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <numeric>

namespace vela::clustering {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// False if one of the distances is infinite, NaN, negative or -0.
bool copy_row(const double* values, std::size_t count, double* out) {
    constexpr auto kInfinityBits = std::bit_cast<std::uint64_t>(kInfinity);
    constexpr std::uint64_t kSignBit = 0x8000000000000000;
    std::uint64_t signs = kSignBit;
    for (std::size_t i = 0; i < count; ++i) {
        const auto bits = std::bit_cast<std::uint64_t>(values[i]);
        signs &= (bits - kInfinityBits) & ~bits;  // both set: below infinity, not below 0
        out[i] = values[i];
    }
    return signs != 0;
}

}  // namespace

SingleLinkageTree::SingleLinkageTree(int rows)
    : m_into(static_cast<std::size_t>(rows)),
      m_height(m_into.size()),
      m_bound(m_into.size()),
      m_near(m_into.size()),
      m_order(m_into.size() - 1),
      m_lower(m_into.size()),
      m_merges(m_into.size() - 1) {}

bool SingleLinkageTree::find(const Condensed& distances) {
    constexpr std::size_t kRowsBetween = 16;  // updates of the bounds: few, but soon after a change
    const std::size_t last = m_into.size() - 1;
    m_into[last] = static_cast<int>(last);
    m_height[last] = kInfinity;
    m_bound[last] = -kInfinity;
    for (std::size_t row = last; row-- > 0;) {
        const std::ptrdiff_t first =
            distances.offset(static_cast<int>(row)) + static_cast<std::ptrdiff_t>(row) + 1;
        if (!copy_row(distances.values() + first, last - row, m_near.data() + row + 1)) {
            return false;
        }
        if (row % kRowsBetween == 0) {
            update_bounds(row + 1);
        }
        add_row(row);
    }
    return order_merges();
}

/// A row's target is before it, or the last row: upwards, each target has its bound already.
void SingleLinkageTree::update_bounds(std::size_t first) {
    for (std::size_t j = first; j + 1 < m_into.size(); ++j) {
        m_bound[j] = std::max(m_height[j], m_bound[static_cast<std::size_t>(m_into[j])]);
    }
}

/// Takes `row`, from which m_near[j] is the distance to row j, into the tree of the later rows.
void SingleLinkageTree::add_row(std::size_t row) {
    const std::size_t last = m_into.size() - 1;
    double* const near = m_near.data();
    double* const height = m_height.data();
    double* const bound = m_bound.data();
    int* const into = m_into.data();
    double toLast = near[last];
    for (std::size_t j = last; --j > row;) {
        const double direct = near[j];
        if (direct > bound[j]) {
            toLast = std::min(toLast, direct);
            continue;
        }
        const double own = height[j];
        auto next = static_cast<std::size_t>(into[j]);
        while (height[next] <= own) {
            next = static_cast<std::size_t>(into[next]);
        }
        const bool isNearer = direct <= own;
        height[j] = isNearer ? direct : own;
        into[j] = static_cast<int>(isNearer ? row : next);
        const double joined = isNearer ? own : direct;
        if (next == last) {
            toLast = std::min(toLast, joined);
        } else if (joined < near[next]) {
            near[next] = joined;
        }
    }
    height[row] = toLast;
    bound[row] = toLast;
    into[row] = static_cast<int>(last);
}

/// Shortens the way for the next search.
int SingleLinkageTree::find_lowest(int row) {
    int* const lower = m_lower.data();
    while (lower[row] != row) {
        lower[row] = lower[lower[row]];
        row = lower[row];
    }
    return row;
}

/// False if two merges are at the same height.
bool SingleLinkageTree::order_merges() {
    std::iota(m_order.begin(), m_order.end(), 0);
    std::iota(m_lower.begin(), m_lower.end(), 0);
    const double* const height = m_height.data();
    std::sort(m_order.begin(), m_order.end(),
              [height](int a, int b) { return height[a] < height[b]; });
    for (std::size_t i = 0; i < m_order.size(); ++i) {
        const int row = m_order[i];
        const double distance = height[row];
        if (i > 0 && distance == m_merges[i - 1].distance) {
            return false;
        }
        const int a = find_lowest(row);
        const int b = find_lowest(m_into[static_cast<std::size_t>(row)]);
        m_merges[i] = {std::min(a, b), std::max(a, b), distance};
        m_lower[static_cast<std::size_t>(m_merges[i].hi)] = m_merges[i].lo;
    }
    return true;
}

}  // namespace vela::clustering
