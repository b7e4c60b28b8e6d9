// Sorting words of 64 bits in linear time, whatever their distribution.
//
//   n <= 192      the library sort
//   n <= 131072   counting passes over the 22 or 30 leading bits of the distance from the smallest
//                 word, least significant digit first (Knuth, The Art of Computer Programming 3,
//                 section 5.2.5); words that agree in all of them are sorted among themselves
//   otherwise     one pass into at most 255 groups of adjacent bins, then each group by itself
//
// The groups, and the scratch that they share, keep everything after the first pass inside a cache
// of ordinary size, so that time per word hardly grows with n. A group is either small (8192 words,
// or n / 127) or a single bin, whose range is 2^14 times narrower than that of its parent: no data
// makes the recursion deep.

#include "descriptive/ordering_words.hpp"

#include <array>

namespace vela::descriptive {
namespace {

/// Stable sort by the digits from bit `shift` on; returns the one of the two arrays that holds it.
template <unsigned digitBits, unsigned digits>
std::uint64_t* sort_by_digits(std::uint64_t* words, std::uint64_t* work, std::size_t n,
                              std::uint64_t origin, unsigned shift) {
    constexpr std::uint64_t values = std::uint64_t{1} << digitBits;
    const auto digit = [=](std::uint64_t word, unsigned i) {
        return ((word - origin) >> (shift + i * digitBits)) % values;
    };
    std::array<std::array<std::uint32_t, values>, digits> counts{};
    for (std::size_t i = 0; i < n; ++i) {
        for (unsigned d = 0; d < digits; ++d) {
            ++counts[d][digit(words[i], d)];
        }
    }
    for (unsigned d = 0; d < digits; ++d) {
        auto& next = counts[d];
        if (next[digit(words[0], d)] == n) {
            continue;
        }
        std::uint32_t start = 0;
        for (std::uint32_t& count : next) {
            const std::uint32_t size = count;
            count = start;
            start += size;
        }
        for (std::size_t i = 0; i < n; ++i) {
            const std::uint64_t word = words[i];
            work[next[digit(word, d)]++] = word;
        }
        std::swap(words, work);
    }
    return words;
}

// NOLINTBEGIN(misc-no-recursion): every level leaves off 14 bits at least, or most words.
/// Sorts the runs of words that agree from bit `shift` on; between runs the order is right.
void sort_runs(std::uint64_t* words, std::uint64_t* work, std::size_t n, std::uint64_t origin,
               unsigned shift) {
    const auto prefix = [=](std::size_t i) { return (words[i] - origin) >> shift; };
    for (std::size_t i = 1; i < n; ++i) {
        if (words[i - 1] <= words[i]) {
            continue;
        }
        std::size_t first = i - 1;
        while (first > 0 && prefix(first - 1) == prefix(i)) {
            --first;
        }
        std::size_t end = i + 1;
        while (end < n && prefix(end) == prefix(i)) {
            ++end;
        }
        sort_words(words + first, end - first, work, 0);
        i = end;
    }
}

/// words[0..n) to `out`, which is words or other: of the numbers of passes that end there, the one
/// that suits the caller's data, or a copy where a pass had nothing to do.
template <unsigned digitBits, unsigned digits>
void sort_by_passes(std::uint64_t* words, std::uint64_t* other, std::size_t n, unsigned settledBits,
                    const WordRange& range, std::uint64_t* out) {
    constexpr unsigned resolved = digitBits * digits;
    const std::uint64_t origin = range.smallest >> settledBits << settledBits;
    const auto width = static_cast<unsigned>(std::bit_width(range.largest - origin));
    const unsigned shift = std::max(settledBits, width > resolved ? width - resolved : 0);
    std::uint64_t* const sorted = sort_by_digits<digitBits, digits>(words, other, n, origin, shift);
    if (shift > settledBits) {
        sort_runs(sorted, sorted == words ? other : words, n, origin, shift);
    }
    if (sorted != out) {
        std::copy_n(sorted, n, out);
    }
}

}  // namespace

void sort_words(std::uint64_t* words, std::size_t n, std::uint64_t* scratch, unsigned settledBits) {
    if (n <= kFewWords) {
        std::sort(words, words + n);
        return;
    }
    const auto row = stored_words(words);
    const WordRange range = range_of(n, row);
    if (range.isAscending) {
        return;
    }
    // Counting them would add to the same counts in a row, and wait for each sum.
    if (is_descending(n, row)) {
        std::reverse(words, words + n);
        return;
    }
    if (n <= 2 * kCacheWords) {  // passes beyond the near cache cost less than other groups
        // A part of a sample: spread evenly as a rule, so that 22 bits tell nearly all apart.
        sort_by_passes<11, 2>(words, scratch, n, settledBits, range, words);
        return;
    }
    const Groups groups = distribute(n, row, range, scratch);
    std::copy_n(scratch, n, words);
    for (std::size_t g = 0; g < groups.count; ++g) {
        sort_words(words + groups.starts[g], groups.size(g), scratch, settledBits);
    }
}

void sort_in_cache(std::uint64_t* words, std::size_t n, unsigned settledBits,
                   const WordRange& range, std::uint64_t* out) {
    // A whole sample: its signs and exponents take up to 12 bits before any digit tells.
    sort_by_passes<10, 3>(words, out, n, settledBits, range, out);
}
// NOLINTEND(misc-no-recursion)

}  // namespace vela::descriptive
