// Several order statistics in linear time: count the values by bins of equal width over the order-
// preserving images, keep the bins that hold a wanted rank, and go on inside each of them. Unlike
// selection by a pivot, no data makes it slow: each round narrows a range by up to 2^15.

#include "descriptive/few_values.hpp"
#include "descriptive/ordered_image.hpp"
#include "descriptive/ordering.hpp"
#include "descriptive/ordering_words.hpp"

#include <algorithm>

namespace vela::descriptive {
namespace {

/// Wanted ranks, 0-based within the words at hand after `base` is taken off, ascending.
struct Wanted {
    const std::uint32_t* ranks;
    double* values;
    std::size_t count;
    std::size_t base;

    std::size_t rank(std::size_t i) const { return ranks[i] - 1 - base; }
};

/// A bin that holds wanted ranks, and where its words are.
struct Kept {
    std::size_t bin;
    std::size_t start;
    std::size_t size;
    Wanted wanted;
};

struct KeptBins {
    std::array<Kept, SelectedValues::kCapacity> bins;  // of which `count` are written
    std::size_t count = 0;
    std::size_t words = 0;
    std::size_t mostInOne = 0;
};

KeptBins choose_bins(const std::uint64_t* counts, const Wanted& wanted) {
    KeptBins kept;
    std::size_t bin = 0;
    std::size_t before = 0;
    for (std::size_t i = 0; i < wanted.count;) {
        while (before + counts[bin] <= wanted.rank(i)) {
            before += counts[bin++];
        }
        const auto size = static_cast<std::size_t>(counts[bin]);
        const std::size_t first = i;
        while (i < wanted.count && wanted.rank(i) < before + size) {
            ++i;
        }
        const Wanted inside{wanted.ranks + first, wanted.values + first, i - first,
                            wanted.base + before};
        kept.bins[kept.count++] = {bin, kept.words, size, inside};
        kept.words += size;
        kept.mostInOne = std::max(kept.mostInOne, size);
    }
    return kept;
}

/// The words of the kept bins to `out`, one bin after the other. A call of its own, so that its
/// table is off the stack in the recursion.
template <class Row>
[[gnu::noinline]] void gather(std::size_t n, Row row, const Bins& bins, const KeptBins& kept,
                              std::uint64_t* out) {
    // Words of all other bins go to slot 0, which never moves on: cheaper than a branch that
    // depends on the data.
    std::array<std::uint8_t, Bins::kMost> slotOf;
    std::fill_n(slotOf.begin(), bins.count, std::uint8_t{0});
    std::array<std::size_t, SelectedValues::kCapacity + 1> next;
    next[0] = kept.words;
    for (std::size_t i = 0; i < kept.count; ++i) {
        slotOf[kept.bins[i].bin] = static_cast<std::uint8_t>(i + 1);
        next[i + 1] = kept.bins[i].start;
    }
    for_each_word(0, n, row, [&](std::uint64_t word) {
        const std::uint8_t slot = slotOf[bins.of(word)];
        store_and_prefetch(out + next[slot], word);
        next[slot] += slot != 0 ? 1 : 0;
    });
}

/// The bins of the first n words that hold the wanted values, gathered in `work`, which has
/// room for n words; none where the values are found and written already. Inlined, its loops would
/// be slower by a tenth.
template <class Row>
[[gnu::noinline]] KeptBins narrow(std::size_t n, Row row, const Wanted& wanted,
                                  std::uint64_t* work) {
    const auto write = [&](auto value) {
        for (std::size_t i = 0; i < wanted.count; ++i) {
            wanted.values[i] = value_of(value(wanted.rank(i)));
        }
    };
    KeptBins kept;
    if (n <= kFewWords) {
        for (std::size_t i = 0; i < n; ++i) {
            work[i] = row(i);
        }
        std::sort(work, work + n);
        write(stored_words(work));
        return kept;
    }
    const WordRange range = range_of(n, row);
    if (range.isAscending) {
        write(row);
        return kept;
    }
    const Bins bins(range, n);
    bins.tally(n, row, work);
    kept = choose_bins(work, wanted);
    gather(n, row, bins, kept, work);
    return kept;
}

/// The wanted values in the kept bins; `spare` has room for the words of the largest.
// NOLINTNEXTLINE(misc-no-recursion): every level leaves off 7 bits at least
void select_in_bins(const KeptBins& kept, std::uint64_t* work, std::uint64_t* spare) {
    for (std::size_t i = 0; i < kept.count; ++i) {
        const Kept& bin = kept.bins[i];
        std::uint64_t* const words = work + bin.start;
        select_in_bins(narrow(bin.size, stored_words(words), bin.wanted, spare), spare, words);
    }
}

/// The wanted values of a sample of few values; false, with nothing written, for others.
[[gnu::noinline]] bool select_few_values(const double* x, std::size_t n, const Wanted& wanted) {
    FewValues values;
    if (!values.count(n, images_of(x))) {
        return false;
    }
    std::size_t i = 0;
    values.for_each([&](std::uint64_t image, std::uint64_t /*first*/, std::uint64_t end) {
        while (i < wanted.count && wanted.rank(i) < end) {
            wanted.values[i++] = value_of(image);
        }
    });
    return true;
}

}  // namespace

bool SelectedValues::select(const double* x, std::uint32_t n) {
    std::sort(m_ranks.begin(), m_ranks.begin() + m_count);
    m_count = static_cast<std::size_t>(std::unique(m_ranks.begin(), m_ranks.begin() + m_count) -
                                       m_ranks.begin());
    const Wanted wanted{m_ranks.data(), m_values.data(), m_count, 0};
    if (select_few_values(x, n, wanted)) {
        return true;
    }
    const WordBuffer work(with_scratch(n));
    if (!work) {
        return false;
    }
    const KeptBins kept = narrow(n, images_of(x), wanted, work.words());
    Scratch spare(n, work.words() + n);
    if (!spare.reserve(kept.mostInOne)) {
        return false;
    }
    select_in_bins(kept, work.words(), spare.words());
    return true;
}

double SelectedValues::operator()(std::uint32_t k) const {
    const auto* const found = std::lower_bound(m_ranks.begin(), m_ranks.begin() + m_count, k);
    return m_values[static_cast<std::size_t>(found - m_ranks.begin())];
}

}  // namespace vela::descriptive
