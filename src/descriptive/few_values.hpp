#ifndef VELA_DESCRIPTIVE_FEW_VALUES_HPP
#define VELA_DESCRIPTIVE_FEW_VALUES_HPP

#include "descriptive/ordered_image.hpp"
#include "descriptive/ordering_words.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace vela::descriptive {

/// The different values of a sample that repeats a few of them, as rounded measurements, scores and
/// counts do, and a number for each: what each stands for is soon in order, and so is the sample.
/// A hash table with open addressing (Knuth, The Art of Computer Programming 3, section 6.4). It
/// takes a hundred kilobytes of stack, in calls of their own, and suits samples beyond kCacheWords,
/// which notice neither that nor a vain attempt.
class FewValues {
public:
    /// Counts the words of a row; false as soon as too many of them differ, or one is kEmpty.
    template <class Row>
    bool count(std::size_t n, Row row) {
        m_words.fill(kEmpty);
        std::size_t room = kSlots / 2;
        const auto count_word = [&](std::uint64_t word) {
            const std::size_t slot = slot_of(word);
            if (m_words[slot] == kEmpty) {
                if (room == 0 || word == kEmpty || (slot - home_of(word)) % kSlots > kFarthest) {
                    return false;
                }
                --room;
                m_words[slot] = word;
                m_numbers[slot] = 0;
            }
            ++m_numbers[slot];
            return true;
        };
        return for_words_while(0, n, row, count_word) == n;
    }

    /// Calls use(word, first, end) in ascending order of the words, where [first, end) are the places
    /// of that word in the sorted row. Its number, the count until then, may be replaced there.
    template <class Use>
    void for_each(Use use) {
        std::array<std::pair<std::uint64_t, std::size_t>, kSlots / 2> slots;
        std::size_t held = 0;
        for (std::size_t slot = 0; slot < kSlots; ++slot) {
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
    static constexpr unsigned kSlotBits = 12;
    static constexpr std::size_t kSlots = std::size_t{1} << kSlotBits;
    static constexpr std::size_t kFarthest = 32;            // from home, whatever the values
    static constexpr std::uint64_t kEmpty = kNaNImage - 1;  // the image of one signalling NaN

    static std::size_t home_of(std::uint64_t word) {
        constexpr std::uint64_t kGolden = 0x9E3779B97F4A7C15;  // multiplicative hashing
        return (word * kGolden) >> (64 - kSlotBits);
    }

    /// Where the word is, or could be put.
    std::size_t slot_of(std::uint64_t word) const {
        std::size_t slot = home_of(word);
        while (m_words[slot] != word && m_words[slot] != kEmpty) {
            slot = (slot + 1) % kSlots;
        }
        return slot;
    }

    std::array<std::uint64_t, kSlots> m_words;
    std::array<std::uint64_t, kSlots> m_numbers;
};

}  // namespace vela::descriptive

#endif
