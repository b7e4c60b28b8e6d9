// Single linkage without the search for the closest pair: its heights are the edges of a minimum
// spanning tree. As long as these differ there is one pair at each height, whatever the rule for
// equal distances, so any method gives the same merges bit for bit: nothing is computed, only
// chosen. Equal heights leave a choice that depends on the history, and so does a zero of either
// sign, equal to the other but not the same; they are left to the general run.
//
// find_single_linkage() is Sibson (1973), SLINK, Computer Journal 16, with the rows taken from the
// last to the first: each row's distances then lie one after another in memory, and the row that
// his representation names as the last one of a cluster is the lowest, by which a cluster is known.
// Which of two distances is smaller is anyone's guess throughout, and a wrong guess of the
// processor costs more than all else that is done for a pair. The distances are therefore compared
// as integers of the same order, and choices are made by masks.

#include "clustering/spanning_tree.hpp"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <limits>
#include <numeric>

namespace vela::clustering {
namespace {

constexpr std::int64_t kMagnitude = std::numeric_limits<std::int64_t>::max();  // all but the sign
constexpr std::int64_t kInfinity =
    std::bit_cast<std::int64_t>(std::numeric_limits<double>::infinity());

/// Integers in the order of the doubles, -0 before +0; its own inverse but for the type.
std::int64_t to_order(std::int64_t bits) { return bits ^ ((bits >> 63) & kMagnitude); }

/// a where `isA`, else b, without a jump.
std::int64_t choose(bool isA, std::int64_t a, std::int64_t b) {
    return b ^ ((a ^ b) & -static_cast<std::int64_t>(isA));
}

/// Writes to_order() of the distances; false if one of them is infinite, NaN or -0.
bool read_row(const double* values, std::size_t count, std::int64_t* out) {
    constexpr auto kNegativeZero = std::bit_cast<std::uint64_t>(-0.0);
    std::int64_t isOrdinary = -1;
    for (std::size_t i = 0; i < count; ++i) {
        const auto bits = std::bit_cast<std::int64_t>(values[i]);
        isOrdinary &= (bits & kMagnitude) - kInfinity;  // negative for a finite number
        const std::uint64_t toZero = std::bit_cast<std::uint64_t>(bits) ^ kNegativeZero;
        isOrdinary &= static_cast<std::int64_t>(toZero | (0 - toZero));  // negative unless -0
        out[i] = to_order(bits);
    }
    return isOrdinary < 0;
}

/// Takes `row`, from which near[j] is the distance to row j, into the representation of the later
/// rows.
///
/// The last loop of the algorithm, which looks whether a row's cluster still ends where it did, is
/// done here for the row before, on the way: no row changes between the two. Most clusters end at
/// that row, so its minimum is kept apart: in memory each would have to wait for the one before.
void add_row(std::size_t row, SingleLinkageTree* tree) {
    const std::size_t rows = tree->into.size();
    std::int64_t* const near = tree->near.data();
    std::int64_t* const height = tree->height.data();
    int* const into = tree->into.data();
    const auto previous = static_cast<std::int64_t>(row) + 1;
    std::int64_t toPrevious = kInfinity;
    for (auto j = static_cast<std::int64_t>(rows) - 1; j > previous; --j) {
        const std::int64_t next = into[j];
        const std::int64_t own = height[j];
        const std::int64_t direct = near[j];
        const std::int64_t joined = own < direct ? direct : own;
        // Bitwise: a jump between the two conditions is what is to be avoided.
        const bool isPrevious =
            (static_cast<int>(own >= height[next]) | static_cast<int>(next == previous)) != 0;
        toPrevious = std::min(toPrevious, choose(isPrevious, joined, kInfinity));
        const std::int64_t end = choose(isPrevious, previous, next);
        const std::int64_t place = choose(isPrevious, j, next);
        const std::int64_t there = near[place];
        near[place] = joined < there ? joined : there;
        into[j] = static_cast<int>(choose(direct <= own, previous - 1, end));
        height[j] = direct < own ? direct : own;
    }
    if (row + 1 < rows) {
        height[row + 1] = std::min(near[row + 1], toPrevious);
        into[row + 1] = static_cast<int>(row);
    }
    into[row] = static_cast<int>(row);
    height[row] = kInfinity;
}

/// Numbers the merges; false if two are at the same height.
bool order_merges(SingleLinkageTree* tree) {
    std::iota(tree->order.begin(), tree->order.end(), 1);
    std::sort(tree->order.begin(), tree->order.end(),
              [&](int a, int b) { return tree->height_of(a) < tree->height_of(b); });
    for (std::size_t i = 0; i < tree->order.size(); ++i) {
        if (i > 0 && tree->height_of(tree->order[i]) == tree->height_of(tree->order[i - 1])) {
            return false;
        }
        tree->step[static_cast<std::size_t>(tree->order[i])] = static_cast<int>(i);
    }
    tree->step[0] = static_cast<int>(tree->order.size());
    return true;
}

}  // namespace

SingleLinkageTree::SingleLinkageTree(int rows)
    : into(static_cast<std::size_t>(rows)),
      height(into.size()),
      step(into.size()),
      order(into.size() - 1),
      near(into.size()) {
    later.reserve(into.size());
}

double SingleLinkageTree::height_of(int row) const {
    return std::bit_cast<double>(to_order(height[static_cast<std::size_t>(row)]));
}

bool find_single_linkage(const Condensed& distances, SingleLinkageTree* tree) {
    const std::size_t rows = tree->into.size();
    for (std::size_t row = rows; row-- > 0;) {
        const std::ptrdiff_t first =
            distances.offset(static_cast<int>(row)) + static_cast<std::ptrdiff_t>(row) + 1;
        if (!read_row(distances.values() + first, rows - row - 1, tree->near.data() + row + 1)) {
            return false;
        }
        add_row(row, tree);
    }
    for (std::size_t j = rows; --j > 0;) {
        if (tree->height[j] >= tree->height[static_cast<std::size_t>(tree->into[j])]) {
            tree->into[j] = 0;
        }
    }
    return order_merges(tree);
}

// Of the rows i and j of a pair, one is merged first. Their distance is then final, and it is
// passed on, as a minimum, to the pair of the row that the one is merged into and the other. With i
// from the last row to the first, and for each i the rows j > i in the order of their merges, every
// distance is final when it is passed on, and the memory is read row by row, which it would not be
// with the merges one after another.
void apply_single_linkage(const Condensed& distances, SingleLinkageTree* tree) {
    double* const values = distances.values();
    const int* const into = tree->into.data();
    const int* const step = tree->step.data();
    std::vector<int>& later = tree->later;
    later.clear();
    for (int i = distances.rows() - 1; i >= 0; --i) {
        const std::ptrdiff_t row = distances.offset(i);
        for (int j = i; i > 0 && j < distances.rows(); j += 8) {
            prefetch(values + (distances.offset(i - 1) + j));  // looked at in no order
        }
        const auto end = std::lower_bound(later.begin(), later.end(), i,
                                          [&](int a, int b) { return step[a] < step[b]; });
        for (auto next = later.begin(); next != end; ++next) {  // j is merged first
            const int j = *next;
            const int k = into[j];
            if (k == i) {
                continue;  // the merge of i and j themselves
            }
            double& target = values[k < i ? distances.offset(k) + i : row + k];
            if (values[row + j] < target) {
                target = values[row + j];
            }
        }
        const std::ptrdiff_t rowAfter = distances.offset(into[i]);
        for (auto next = end; next != later.end(); ++next) {  // i is merged first
            const double own = values[row + *next];
            const double there = values[rowAfter + *next];
            values[rowAfter + *next] = own < there ? own : there;
        }
        later.insert(end, i);
    }
}

}  // namespace vela::clustering
