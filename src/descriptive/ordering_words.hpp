#ifndef VELA_DESCRIPTIVE_ORDERING_WORDS_HPP
#define VELA_DESCRIPTIVE_ORDERING_WORDS_HPP

#include "descriptive/word_buffer.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

/// The parts that sorting and selecting share: words of 64 bits in place of doubles.
namespace vela::descriptive {

/// Up to this many words the library sort is not beaten by counting, whatever their order.
inline constexpr std::size_t kFewWords = 192;

struct WordRange {
    std::uint64_t smallest;
    std::uint64_t largest;
    bool isAscending;
};

/// Range of get(0), ..., get(n - 1), n >= 1.
template <class Get>
WordRange range_of(std::size_t n, Get get) {
    std::uint64_t last = get(0);
    std::size_t ascending = 1;  // how many do, at the front
    for (; ascending < n; ++ascending) {
        const std::uint64_t word = get(ascending);
        if (word < last) {
            break;
        }
        last = word;
    }
    // Two chains of comparisons side by side for the rest.
    std::uint64_t low[] = {get(0), last};
    std::uint64_t high[] = {last, last};
    std::size_t i = ascending;
    for (; i + 1 < n; i += 2) {
        const std::uint64_t words[] = {get(i), get(i + 1)};
        low[0] = std::min(low[0], words[0]);
        low[1] = std::min(low[1], words[1]);
        high[0] = std::max(high[0], words[0]);
        high[1] = std::max(high[1], words[1]);
    }
    if (i < n) {
        const std::uint64_t word = get(i);
        low[0] = std::min(low[0], word);
        high[0] = std::max(high[0], word);
    }
    return {std::min(low[0], low[1]), std::max(high[0], high[1]), ascending == n};
}

/// Equal intervals of the range, at most 2^15 and at most as many as there are words: the leading
/// bits of the distance from the smallest word.
struct Bins {
    static constexpr unsigned kMostBits = 15;

    std::uint64_t origin;
    unsigned shift;
    std::size_t count;

    Bins(const WordRange& range, std::size_t n) : origin(range.smallest), shift(0), count(0) {
        const auto width = static_cast<unsigned>(std::bit_width(range.largest - range.smallest));
        const unsigned bits = std::min(kMostBits, static_cast<unsigned>(std::bit_width(n)) - 1);
        shift = width > bits ? width - bits : 0;
        count = static_cast<std::size_t>((range.largest - range.smallest) >> shift) + 1;
    }

    std::size_t of(std::uint64_t word) const {
        return static_cast<std::size_t>((word - origin) >> shift);
    }

    template <class Get>
    void tally(std::size_t n, Get get, std::uint64_t* counts) const {
        std::fill_n(counts, count, std::uint64_t{0});
        for (std::size_t i = 0; i < n; ++i) {
            ++counts[of(get(i))];
        }
    }
};

/// Stores that fill many places at once wait for every cache line that they begin, unless it is
/// asked for as soon as they come to the line before it.
template <class Word>
void store_and_prefetch(Word* place, Word word) {
    constexpr std::size_t kWordsPerLine = 8;
    *place = word;
    __builtin_prefetch(place + kWordsPerLine, 1);
}

/// Up to this many words fit, twice, into the cache next to a core.
inline constexpr std::size_t kCacheWords = 65536;

/// Words group by group: each group below the next, in any order inside.
struct Groups {
    static constexpr std::size_t kMost = 255;
    static constexpr std::size_t kWantedWords = 8192;  // then the counting inside is short, too

    std::size_t count = 0;
    std::array<std::size_t, kMost + 1> starts{};

    std::size_t size(std::size_t group) const { return starts[group + 1] - starts[group]; }
    std::size_t largest() const {
        std::size_t most = 0;
        for (std::size_t group = 0; group < count; ++group) {
            most = std::max(most, size(group));
        }
        return most;
    }
};

/// get(0), ..., get(n - 1) to `out`, group by group. `out` serves for the counts first, so get()
/// must not read there. A call of its own, so that its table is off the stack in the recursion.
template <class Get>
[[gnu::noinline]] Groups distribute(std::size_t n, Get get, const WordRange& range,
                                    std::uint64_t* out) {
    const Bins bins(range, n);
    bins.tally(n, get, out);

    std::array<std::uint8_t, std::size_t{1} << Bins::kMostBits> groupOf;
    Groups groups;
    const std::size_t target = std::max(Groups::kWantedWords, n / (Groups::kMost / 2) + 1);
    std::size_t size = 0;
    std::size_t placed = 0;
    for (std::size_t bin = 0; bin < bins.count; ++bin) {
        const auto inBin = static_cast<std::size_t>(out[bin]);
        if (size > 0 && inBin > 0 && size + inBin > target) {
            groups.starts[++groups.count] = placed;
            size = 0;
        }
        groupOf[bin] = static_cast<std::uint8_t>(groups.count);
        size += inBin;
        placed += inBin;
    }
    groups.starts[++groups.count] = n;

    auto next = groups.starts;
    for (std::size_t i = 0; i < n; ++i) {
        const std::uint64_t word = get(i);
        store_and_prefetch(out + next[groupOf[bins.of(word)]]++, word);
    }
    return groups;
}

/// Sorts words[0..n) ascending; scratch has room for n words.
void sort_words(std::uint64_t* words, std::size_t n, std::uint64_t* scratch);

/// Sorts each group; scratch has room for the largest.
void sort_groups(const Groups& groups, std::uint64_t* words, std::uint64_t* scratch);

/// words[0..n), n <= kCacheWords, in ascending order to `out`, another array; words is scratch.
void sort_in_cache(std::uint64_t* words, std::size_t n, const WordRange& range, std::uint64_t* out);

/// get(0), ..., get(n - 1), n >= 1, in ascending order to `out`, but as they come where the range
/// says that they ascend. Otherwise there is scratch space afterwards for all words that agree in
/// the 15 leading bits of their distance from the smallest; false when it could not be allocated.
template <class Get>
bool sort_from(std::size_t n, Get get, const WordRange& range, std::uint64_t* out,
               Scratch& scratch) {
    if (!range.isAscending && n > kCacheWords) {
        const Groups groups = distribute(n, get, range, out);
        if (scratch.reserve(groups.largest())) {
            sort_groups(groups, out, scratch.words());
        }
        return scratch.words() != nullptr;
    }
    std::uint64_t* const copy = range.isAscending ? out : scratch.words();
    for (std::size_t i = 0; i < n; ++i) {
        copy[i] = get(i);
    }
    if (!range.isAscending) {
        sort_in_cache(copy, n, range, out);
    }
    return true;
}

}  // namespace vela::descriptive

#endif
