#ifndef VELA_DESCRIPTIVE_ORDERING_WORDS_HPP
#define VELA_DESCRIPTIVE_ORDERING_WORDS_HPP

#include "descriptive/ordered_image.hpp"
#include "descriptive/word_buffer.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>

/// The parts that sorting and selecting share: words of 64 bits in place of doubles.
namespace vela::descriptive {

/// Up to this many words the library sort is not beaten by counting, whatever their order.
inline constexpr std::size_t kFewWords = 192;

/// Words made from what stands in a row of memory: make(source[i], i) for i = 0, 1, ...
template <class Source, class Make>
class WordRow {
public:
    WordRow(const Source* source, Make make) : m_source(source), m_make(make) {}

    std::uint64_t operator()(std::size_t i) const { return m_make(m_source[i], i); }
    void prefetch(std::size_t i) const { __builtin_prefetch(m_source + i); }

private:
    const Source* m_source;
    Make m_make;
};

/// The words of an array.
inline auto stored_words(const std::uint64_t* words) {
    return WordRow(words, [](std::uint64_t word, std::size_t) { return word; });
}

/// The images of values that give the values back.
inline auto images_of(const double* x) {
    return WordRow(x, [](double value, std::size_t) { return image_of(value); });
}

/// The images of values that tell which of them are tied.
inline auto tie_images_of(const double* x) {
    return WordRow(x, [](double value, std::size_t) { return tie_image_of(value); });
}

/// Whether what is written to the items would be read from the n values. A sample that changes
/// between two looks at it must not be looked at twice.
template <class Item>
bool share_memory(const double* x, std::size_t n, const Item* items, std::size_t count) {
    const auto start = reinterpret_cast<std::uintptr_t>(x);
    const auto other = reinterpret_cast<std::uintptr_t>(items);
    return start < other + count * sizeof(Item) && other < start + n * sizeof(double);
}

/// Calls use(row(i)) for i = first, ..., n - 1 as long as it returns true; returns the i for which
/// it did not, or n. Memory is asked for half a page ahead, because what a processor asks for by
/// itself ends with each page.
template <class Row, class Use>
std::size_t for_words_while(std::size_t first, std::size_t n, Row row, Use use) {
    constexpr std::size_t kLine = 8;
    constexpr std::size_t kAhead = 256;
    std::size_t i = first;
    for (; i + kLine <= n; i += kLine) {
        row.prefetch(std::min(i + kAhead, n - 1));
        for (std::size_t k = 0; k < kLine; ++k) {
            if (!use(row(i + k))) {
                return i + k;
            }
        }
    }
    while (i < n && use(row(i))) {
        ++i;
    }
    return i;
}

/// Calls use(row(i)) for i = first, ..., n - 1.
template <class Row, class Use>
void for_each_word(std::size_t first, std::size_t n, Row row, Use use) {
    for_words_while(first, n, row, [&](std::uint64_t word) {
        use(word);
        return true;
    });
}

/// Whether compare(word, next) holds for each of the first n words, n >= 1, and the one after it.
template <class Row, class Compare>
bool is_ordered(std::size_t n, Row row, Compare compare) {
    std::uint64_t last = row(0);
    return for_words_while(1, n, row, [&](std::uint64_t word) {
               return compare(std::exchange(last, word), word);
           }) == n;
}

template <class Row>
bool is_ascending(std::size_t n, Row row) {
    return is_ordered(n, row, std::less_equal{});
}

template <class Row>
bool is_descending(std::size_t n, Row row) {
    return is_ordered(n, row, std::greater_equal{});
}

struct WordRange {
    std::uint64_t smallest;
    std::uint64_t largest;
    bool isAscending;
};

/// Range of the first n words, n >= 1.
template <class Row>
WordRange range_of(std::size_t n, Row row) {
    std::uint64_t low = row(0);
    std::uint64_t high = low;
    const std::size_t ascending = for_words_while(1, n, row, [&](std::uint64_t word) {
        const bool ascends = high <= word;
        high = ascends ? word : high;
        return ascends;
    });
    for_each_word(ascending, n, row, [&](std::uint64_t word) {
        low = word < low ? word : low;
        high = word > high ? word : high;
    });
    return {low, high, ascending == n};
}

/// Equal intervals of the range, at most as many as there are words: the leading bits of the
/// distance from the smallest word.
struct Bins {
    // More than 2^15, because the images of numbers of both signs span a little more than 2^63:
    // of 2^15 equal parts of 2^64 they would use no more than half.
    static constexpr std::size_t kMost = 40960;

    std::uint64_t origin;
    unsigned shift;
    std::size_t count;

    Bins(const WordRange& range, std::size_t n) : origin(range.smallest), shift(0), count(0) {
        const auto width = static_cast<unsigned>(std::bit_width(range.largest - range.smallest));
        const std::size_t most = std::min(kMost, n);
        const auto bits = static_cast<unsigned>(std::bit_width(most));
        shift = width > bits ? width - bits : 0;
        shift += (range.largest - range.smallest) >> shift < most ? 0 : 1;
        count = of(range.largest) + 1;
    }

    std::size_t of(std::uint64_t word) const {
        return static_cast<std::size_t>((word - origin) >> shift);
    }

    template <class Row>
    void tally(std::size_t n, Row row, std::uint64_t* counts) const {
        std::fill_n(counts, count, std::uint64_t{0});
        for_each_word(0, n, row, [&](std::uint64_t word) { ++counts[of(word)]; });
    }
};

/// Stores that fill many places at once wait for every cache line that they begin, unless it is
/// asked for as soon as they come to the line before it.
template <class Word>
void store_and_prefetch(Word* place, Word word) {
    constexpr std::size_t kWordsPerLine = 64 / sizeof(Word);
    *place = word;
    __builtin_prefetch(place + kWordsPerLine, 1);
}

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

/// The first n words to `out`, group by group. `out` serves for the counts first, so the row must
/// not be there. A call of its own, so that its table is off the stack in the recursion.
template <class Row>
[[gnu::noinline]] Groups distribute(std::size_t n, Row row, const WordRange& range,
                                    std::uint64_t* out) {
    const Bins bins(range, n / 8);
    bins.tally(n, row, out);

    std::array<std::uint8_t, Bins::kMost> groupOf;
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
    for_each_word(0, n, row, [&](std::uint64_t word) {
        store_and_prefetch(out + next[groupOf[bins.of(word)]]++, word);
    });
    return groups;
}

/// Sorts words[0..n) ascending; scratch has room for n words. Those that differ in the last
/// `settledBits` only are in order already, as words that end with their position are: no pass of a
/// stable sort need look at these bits.
void sort_words(std::uint64_t* words, std::size_t n, std::uint64_t* scratch, unsigned settledBits);

/// words[0..n), n <= kCacheWords, in ascending order to `out`, another array; words is scratch.
void sort_in_cache(std::uint64_t* words, std::size_t n, unsigned settledBits,
                   const WordRange& range, std::uint64_t* out);

/// The first n words of the row, n >= 1, in ascending order to `out`. Calls finish(first, end) for one
/// part after the other that is in order, while a cache still holds it; words that agree in the 16
/// leading bits of their distance from the smallest come in one part, and there is scratch space for
/// its words then, unless they stood in descending order. False when that could not be allocated.
template <class Row, class Finish>
bool sort_from(std::size_t n, Row row, unsigned settledBits, const WordRange& range,
               std::uint64_t* out, Scratch& scratch, Finish finish) {
    if (is_descending(n, row)) {
        std::uint64_t* next = out + n;
        for_each_word(0, n, row, [&](std::uint64_t word) { *--next = word; });
        finish(0, n);
        return true;
    }
    if (n <= kCacheWords) {
        std::uint64_t* const copy = scratch.words();
        std::size_t i = 0;
        for_each_word(0, n, row, [&](std::uint64_t word) { copy[i++] = word; });
        sort_in_cache(copy, n, settledBits, range, out);
        finish(0, n);
        return true;
    }
    const Groups groups = distribute(n, row, range, out);
    if (!scratch.reserve(groups.largest())) {
        return false;
    }
    for (std::size_t g = 0; g < groups.count; ++g) {
        sort_words(out + groups.starts[g], groups.size(g), scratch.words(), settledBits);
        finish(groups.starts[g], groups.starts[g + 1]);
    }
    return true;
}

}  // namespace vela::descriptive

#endif
