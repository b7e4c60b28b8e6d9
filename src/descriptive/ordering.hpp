#ifndef VELA_DESCRIPTIVE_ORDERING_HPP
#define VELA_DESCRIPTIVE_ORDERING_HPP

#include "descriptive/ordering_small.hpp"
#include "descriptive/word_buffer.hpp"

#include <array>
#include <cstddef>
#include <cstdint>

/// Everything in the library that needs data in order: a sorted copy, the sorting permutation with
/// its ties, and single order statistics without a full sort. NaN of either sign stands after
/// +infinity. Time is linear in the number of values for whatever data, memory 16 bytes and a bit
/// per value at most and 8 as a rule where there are many, and nothing here raises a floating-point
/// fault or touches the floating-point state.
namespace vela::descriptive {

struct WordRange;

/// A private copy of n values in ascending order; false when it could not be allocated. A few values
/// have room in the object.
class SortedCopy {
public:
    SortedCopy(const double* x, std::uint32_t n);
    SortedCopy(const SortedCopy&) = delete;
    SortedCopy& operator=(const SortedCopy&) = delete;

    explicit operator bool() const { return m_values != nullptr; }
    const double* values() const { return m_values; }
    std::uint32_t size() const { return m_size; }

    /// The order statistic x(k), 1 <= k <= size().
    double operator()(std::uint32_t k) const { return m_values[k - 1]; }

private:
    std::uint32_t m_size;
    std::array<double, kTinySample> m_few;
    WordBuffer m_buffer;
    double* m_values = nullptr;
};

/// The permutation that sorts x, equal values and NaN in the order of their positions; false when
/// it could not be allocated. Once made it no longer reads x.
class SortedOrder {
public:
    SortedOrder(const double* x, std::uint32_t n);

    explicit operator bool() const { return static_cast<bool>(m_buffer); }

    /// The position in x of the i-th smallest value, i from 0.
    std::uint32_t operator[](std::size_t i) const {
        return static_cast<std::uint32_t>(m_buffer.words()[i] & position_mask());
    }

    /// The ranks from 1, equal values sharing their average, in the order of x; x itself may take
    /// them. The last use of the order: its memory serves as scratch.
    void write_ranks(double* ranks);

private:
    static constexpr std::uint64_t kOne = 1;

    std::uint64_t position_mask() const { return (kOne << m_positionBits) - 1; }
    std::uint64_t prefix(std::size_t i) const { return m_buffer.words()[i] >> m_positionBits; }
    std::uint64_t pack(std::uint64_t prefix, std::uint64_t position) const {
        return prefix << m_positionBits | position;
    }
    std::uint64_t image(std::size_t i) const;
    std::uint64_t* marks() const { return m_buffer.words() + m_size; }
    bool is_tied(std::size_t i) const { return (marks()[i / 64] >> (i % 64) & 1U) != 0; }
    bool sort_by_value();
    bool sort_by_image();
    template <class Row>
    bool sort_words_of(Row row, const WordRange& range);
    unsigned lost_bits(const WordRange& range) const;
    bool all_share_trailing_bits(std::uint64_t image, unsigned bits) const;
    template <class IsTied>
    void mark(std::size_t first, std::size_t end, IsTied is_tied);
    void mark_repeats(std::size_t first, std::size_t end);
    void settle_repeats(std::size_t first, std::size_t end, std::uint64_t* scratch);
    std::size_t settle_run(std::size_t i, std::uint64_t* scratch);
    void sort_run(std::size_t first, std::size_t size, std::uint64_t* scratch);
    std::size_t end_of_run(std::size_t end) const;
    template <class Use>
    void for_each_rank(Use use) const;
    bool is_scattered() const;
    void write_ranks_by_blocks(double* ranks);

    const double* m_x;
    std::uint32_t m_size;
    unsigned m_positionBits;                       // what a position needs, at least 1
    bool m_prefixDecides = true;                   // equal leading bits stand for equal values
    std::uint64_t m_nanStart = ~std::uint64_t{0};  // words from there on stand for NaN
    WordBuffer m_buffer;  // words of leading bits and position; then a bit for each value that
                          // equals the one before it, as a NaN never does
};

/// A few order statistics of a sample, found without sorting it. First every rank is asked for,
/// then select() runs once, then the values are read.
class SelectedValues {
public:
    static constexpr std::size_t kCapacity = 255;  // they are told apart by a byte

    /// Asks for x(k), 1 <= k <= n.
    void want(std::uint32_t k) { m_ranks[m_count++] = k; }

    /// False when the work array could not be allocated.
    bool select(const double* x, std::uint32_t n);

    /// x(k) for a k that was asked for.
    double operator()(std::uint32_t k) const;

private:
    std::array<std::uint32_t, kCapacity> m_ranks{};
    std::array<double, kCapacity> m_values{};
    std::size_t m_count = 0;
};

/// Calls read(sample), where sample(k) is x(k), with a sorted copy or with the order statistics
/// that for_each_rank(want) asks for by want(k), at most SelectedValues::kCapacity: whichever costs
/// less. False, without a call, when memory could not be allocated.
template <class ForEachRank, class Read>
bool with_order_statistics(const double* x, std::uint32_t n, ForEachRank for_each_rank, Read read) {
    if (n <= kSmallSample) {
        const SortedCopy sorted(x, n);
        if (sorted) {
            read(sorted);
        }
        return static_cast<bool>(sorted);
    }
    SelectedValues selected;
    for_each_rank([&](std::uint32_t k) { selected.want(k); });
    if (!selected.select(x, n)) {
        return false;
    }
    read(selected);
    return true;
}

/// order[i] = position in x of the i-th smallest value, as SortedOrder, also when no memory is
/// left: then it sorts in place, more slowly.
void write_order(const double* x, std::uint32_t n, std::uint32_t* order);

}  // namespace vela::descriptive

#endif
