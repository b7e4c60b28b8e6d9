#include "descriptive/ordering.hpp"
#include "descriptive/ordering_words.hpp"

#include <algorithm>
#include <bit>

namespace vela::descriptive {

/// The first i >= end that is not tied with the one before it.
std::size_t SortedOrder::end_of_run(std::size_t end) const {
    while (end < m_size && is_tied(end)) {
        ++end;
    }
    return end;
}

/// Calls use(i, twice its rank) for i = 0, 1, ..., by 64 of them: how long the next run of equal
/// values is could not be predicted, so no branch depends on it.
template <class Use>
void SortedOrder::for_each_rank(Use use) const {
    std::size_t runFirst = 0;
    std::size_t runEnd = 0;
    for (std::size_t first = 0; first < m_size; first += 64) {
        const std::size_t end = std::min<std::size_t>(first + 64, m_size);
        runEnd = end_of_run(std::max(runEnd, end));
        const std::uint64_t ties = marks()[first / 64];
        if (ties == 0 && runEnd == end) {
            for (std::size_t i = first; i < end; ++i) {
                use(i, 2 * i + 2);
            }
            continue;
        }
        std::array<std::size_t, 64> runEnds;
        std::size_t next = runEnd;
        for (std::size_t i = end; i-- > first;) {
            runEnds[i - first] = next;
            next = (ties >> (i - first) & 1U) != 0 ? next : i;
        }
        for (std::size_t i = first; i < end; ++i) {
            runFirst = (ties >> (i - first) & 1U) != 0 ? runFirst : i;
            use(i, runFirst + runEnds[i - first] + 1);
        }
    }
}

void SortedOrder::write_ranks(double* ranks) {
    if (m_size > 4 * kCacheWords && is_scattered()) {
        write_ranks_by_blocks(ranks);
        return;
    }
    constexpr std::size_t kAhead = 16;  // stores all over the ranks are asked for this much earlier
    for_each_rank([=, this, last = m_size - std::size_t{1}](std::size_t i, std::size_t twice) {
        __builtin_prefetch(ranks + (*this)[std::min(i + kAhead, last)], 1);
        ranks[(*this)[i]] = static_cast<double>(static_cast<std::int64_t>(twice)) / 2.0;
    });
}

/// Whether one value and the next are in different parts of x as a rule.
bool SortedOrder::is_scattered() const {
    constexpr std::uint32_t kSamples = 256;
    constexpr std::uint32_t kNear = 64;
    std::uint32_t far = 0;
    for (std::uint32_t sample = 0; sample < kSamples; ++sample) {
        const std::size_t i = sample * std::size_t{m_size / kSamples};
        const std::uint32_t low = std::min((*this)[i], (*this)[i + 1]);
        const std::uint32_t high = std::max((*this)[i], (*this)[i + 1]);
        far += high - low > kNear ? 1 : 0;
    }
    return far > kSamples / 2;
}

/// For more ranks than a cache and the address translation hold, where one store after the other
/// all over them would each wait for memory: first every rank, as one word with its place inside of
/// a block, goes to the block where it belongs, which its words fill exactly; and then, block by
/// block, to its place.
void SortedOrder::write_ranks_by_blocks(double* ranks) {
    constexpr unsigned kBlocksBits = 8;
    const unsigned bits = m_positionBits - kBlocksBits;
    const std::uint64_t mask = (kOne << bits) - 1;
    std::array<std::size_t, std::size_t{1} << kBlocksBits> next;
    for (std::size_t block = 0; block < next.size(); ++block) {
        next[block] = block << bits;
    }
    for_each_rank([&](std::size_t i, std::size_t twiceTheRank) {
        const std::uint32_t position = (*this)[i];
        store_and_prefetch(ranks + next[position >> bits]++,
                           std::bit_cast<double>(twiceTheRank << bits | (position & mask)));
    });
    std::uint64_t* const words = m_buffer.words();
    for (std::size_t start = 0; start < m_size; start += mask + 1) {
        const std::size_t size = std::min<std::size_t>(mask + 1, m_size - start);
        std::transform(ranks + start, ranks + start + size, words,
                       [](double word) { return std::bit_cast<std::uint64_t>(word); });
        for (std::size_t i = 0; i < size; ++i) {
            const auto twiceTheRank = static_cast<std::int64_t>(words[i] >> bits);
            ranks[start + (words[i] & mask)] = static_cast<double>(twiceTheRank) / 2.0;
        }
    }
}

}  // namespace vela::descriptive
