#ifndef VELA_DESCRIPTIVE_ORDERING_SMALL_HPP
#define VELA_DESCRIPTIVE_ORDERING_SMALL_HPP

#include "descriptive/ordered_image.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

/// Ordering a small sample of ordinary numbers: a counting sort by equal intervals of the values
/// leaves them nearly in place, an insertion sort does the rest. Both are linear unless the sample
/// is lopsided, when the insertion sort gives up early. A few values are compared each with each.
namespace vela::descriptive {

/// Samples up to this size are small.
inline constexpr std::size_t kSmallSample = 1024;

/// Fewer values are not worth counting by intervals.
inline constexpr std::size_t kTinySample = 20;

/// Every item straight to its place, which is the number of values before it. Of a few values all
/// pairs are compared sooner than any sort gets over its branches, which nothing can predict.
template <class Item, class Make>
void place_tiny_sample(const double* x, std::size_t n, Item* out, Make make) {
    std::array<std::uint32_t, kTinySample> places;
    for (std::uint32_t i = 0; i < n; ++i) {
        std::uint32_t greater = 0;
        for (std::uint32_t k = 0; k < i; ++k) {
            const std::uint32_t isGreater = x[k] > x[i] ? 1 : 0;
            places[k] += isGreater;
            greater += isGreater;
        }
        places[i] = i - greater;
    }
    for (std::size_t i = 0; i < n; ++i) {
        out[places[i]] = make(i);
    }
}

/// Stable insertion sort; false where it would have to move items too often, with the items in
/// some other order.
template <class Item, class Less>
bool insert_in_order(Item* items, std::size_t n, Less less) {
    constexpr std::size_t kMovesPerItem = 8;
    std::size_t moves = 0;
    for (std::size_t i = 1; i < n; ++i) {
        const Item item = items[i];
        std::size_t hole = i;
        while (hole > 0 && less(item, items[hole - 1])) {
            items[hole] = items[hole - 1];
            --hole;
        }
        items[hole] = item;
        moves += i - hole;
        if (moves > kMovesPerItem * std::min(n, 2 * i + 128)) {  // soon where all is in one place
            return false;
        }
    }
    return true;
}

inline bool all_finite(const double* x, std::size_t n) {
    std::uint64_t seen = 0;
    for (std::size_t i = 0; i < n; ++i) {
        seen |= raise_non_finite(x[i]);
    }
    return (seen & kSignBit) == 0;
}

/// Equal intervals of finite values, as many as there are values.
struct Intervals {
    double smallest = 0.0;
    double perUnit = 0.0;
    bool isUsable = false;  ///< the arithmetic does not overflow

    Intervals(const double* x, std::size_t n) {
        std::array<double, 2> low{x[0], x[n - 1]};  // two chains of comparisons side by side
        std::array<double, 2> high = low;
        for (std::size_t i = 0; i + 1 < n; i += 2) {
            low[0] = std::min(low[0], x[i]);
            low[1] = std::min(low[1], x[i + 1]);
            high[0] = std::max(high[0], x[i]);
            high[1] = std::max(high[1], x[i + 1]);
        }
        smallest = std::min(low[0], low[1]);
        const double largest = std::max(high[0], high[1]);
        if (smallest > -1e300 && largest < 1e300 && largest - smallest > 1e-290) {
            perUnit = static_cast<double>(n - 1) / (largest - smallest);
            isUsable = true;
        }
    }

    /// 0 to n - 1, never decreasing with the value.
    std::size_t of(double value) const {
        return static_cast<std::uint32_t>((value - smallest) * perUnit);
    }
};

/// Items for the values of x, make(i) for x[i], in ascending order to `out`; equal values keep the
/// order of their positions. False where the sample is not fit for it; `out` holds anything then.
template <class Item, class Make, class Less>
bool sort_small(const double* x, std::size_t n, Item* out, Make make, Less less) {
    if (!all_finite(x, n)) {
        return false;
    }
    if (n < kTinySample) {
        place_tiny_sample(x, n, out, make);
        return true;
    }
    const Intervals intervals(x, n);
    if (!intervals.isUsable) {
        return false;
    }
    std::array<std::uint16_t, kSmallSample> starts;
    std::array<std::uint16_t, kSmallSample> intervalOf;
    std::fill_n(starts.begin(), n, std::uint16_t{0});
    for (std::size_t i = 0; i < n; ++i) {
        const std::size_t interval = intervals.of(x[i]);
        intervalOf[i] = static_cast<std::uint16_t>(interval);
        ++starts[interval];
    }
    std::uint32_t start = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const std::uint32_t size = starts[i];
        starts[i] = static_cast<std::uint16_t>(start);
        start += size;
    }
    for (std::size_t i = 0; i < n; ++i) {
        out[starts[intervalOf[i]]++] = make(i);
    }
    return insert_in_order(out, n, less);
}

}  // namespace vela::descriptive

#endif
