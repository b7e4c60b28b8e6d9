#ifndef VELA_DESCRIPTIVE_FEW_VALUES_HPP
#define VELA_DESCRIPTIVE_FEW_VALUES_HPP

#include "descriptive/ordered_image.hpp"
#include "descriptive/ordering_small.hpp"
#include "descriptive/ordering_words.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace vela::descriptive {

/// The different values of a sample that repeats a few of them, as rounded measurements, scores and
/// counts do, and a number for each: what each stands for is soon in order, and so is the sample.
/// A hash table with open addressing (Knuth, The Art of Computer Programming 3, section 6.4). It
/// takes a hundred kilobytes of stack, in calls of their own, and is no use to a small sample; larger
/// ones hardly notice a vain attempt.
class FewValues {
public:
    /// Counts the n words of a row; false for a small sample, and as soon as too many of them differ,
    /// or one is kEmpty.
    template <class Row>
    bool count(std::size_t n, Row row) {
        if (n <= kSmallSample) {
            return false;
        }
        m_most = std::min(kMostValues, n / 16);
        const std::size_t probes = m_most < 1000 ? 64 : 128;
        const std::size_t expected = probes * probes / 2 / m_most;  // where so many differ
        if (2 * repeats_in_probes(n, row, probes) < expected) {
            return false;
        }
        clear();
        return for_words_while(0, n, row, [this](std::uint64_t word) { return add(word); }) == n;
    }

    /// Calls use(word, first, end) in ascending order of the words, where [first, end) are the places
    /// of that word in the sorted row. Its number, the count until then, may be replaced there.
    template <class Use>
    void for_each(Use use) {
        std::array<std::pair<std::uint64_t, std::size_t>, kMostValues> slots;
        std::size_t held = 0;
        for (std::size_t slot = 0; slot <= m_mask; ++slot) {
            if (m_words[slot] != kEmpty) {
                slots[held++] = {m_words[slot], slot};
            }
        }
        std::sort(slots.begin(), slots.begin() + held);
        std::uint64_t first = 0;
        for (std::size_t i = 0; i < held; ++i) {
            const auto [word, slot] = slots[i];
            const std::uint64_t end = first + m_numbers[slot];
            use(word, first, end);
            first = end;
        }
    }

    /// The number of a word that was counted.
    std::uint64_t& operator[](std::uint64_t word) { return m_numbers[slot_of(word)]; }

private:
    static constexpr std::size_t kMostValues = 2048;
    static constexpr std::uint64_t kGolden = 0x9E3779B97F4A7C15;  // multiplicative hashing
    static constexpr std::size_t kFarthest = 32;                  // from home, whatever the values
    static constexpr std::uint64_t kEmpty = kNaNImage - 1;        // the image of one signalling NaN

    std::size_t home_of(std::uint64_t word) const { return (word * kGolden) >> m_shift; }

    /// How many of some words from all over the row were seen to be there before. Places at random,
    /// because data may have a period.
    template <class Row>
    static std::size_t repeats_in_probes(std::size_t n, Row row, std::size_t probes) {
        const std::uint64_t stride = n / probes;
        std::array<std::uint64_t, 256> lastSeen;
        lastSeen.fill(kEmpty);
        std::size_t repeats = 0;
        std::uint64_t random = 0;
        for (std::uint64_t first = 0; first < probes * stride; first += stride) {
            random = random * 6364136223846793005 + 1442695040888963407;  // Knuth, MMIX
            const std::uint64_t word = row(first + ((random >> 32U) * stride >> 32U));
            std::uint64_t& seen = lastSeen[(word * kGolden) >> 56U];
            repeats += std::exchange(seen, word) == word ? 1 : 0;
        }
        return repeats;
    }

    void clear() {
        m_held = 0;
        const std::size_t slots = std::bit_ceil(2 * m_most);
        m_mask = slots - 1;
        m_shift = 64 - static_cast<unsigned>(std::bit_width(m_mask));
        std::fill_n(m_words.begin(), slots, kEmpty);
    }

    bool add(std::uint64_t word) {
        const std::size_t slot = slot_of(word);
        if (m_words[slot] == kEmpty) {
            if (m_held == m_most || word == kEmpty ||
                ((slot - home_of(word)) & m_mask) > kFarthest) {
                return false;
            }
            ++m_held;
            m_words[slot] = word;
            m_numbers[slot] = 0;
        }
        ++m_numbers[slot];
        return true;
    }

    /// Where the word is, or could be put.
    std::size_t slot_of(std::uint64_t word) const {
        std::size_t slot = home_of(word);
        while (m_words[slot] != word && m_words[slot] != kEmpty) {
            slot = (slot + 1) & m_mask;
        }
        return slot;
    }

    std::size_t m_held = 0;
    std::size_t m_most = 0;
    std::size_t m_mask = 0;  // one less than the slots: a power of two, at least twice the values
    unsigned m_shift = 0;    // leaves as many bits of a hash as a slot takes
    std::array<std::uint64_t, 2 * kMostValues> m_words;
    std::array<std::uint64_t, 2 * kMostValues> m_numbers;
};

}  // namespace vela::descriptive

#endif
