#include "descriptive/ordering.hpp"

#include "descriptive/decimal_steps.hpp"
#include "descriptive/few_values.hpp"
#include "descriptive/ordered_image.hpp"
#include "descriptive/ordering_small.hpp"
#include "descriptive/ordering_words.hpp"

#include <algorithm>
#include <numeric>
#include <utility>

namespace vela::descriptive {

namespace {

/// NaN, which the library sort must not see, to the end; the number of the others.
std::size_t move_nan_back(double* values, std::size_t n) {
    std::size_t numbers = n;
    for (std::size_t i = n; i-- > 0;) {
        if (is_nan_image(image_of(values[i]))) {
            std::swap(values[i], values[--numbers]);
        }
    }
    return numbers;
}

/// The sorted copy of a sample of few values; false, with nothing written, for others.
template <class Row>
[[gnu::noinline]] bool repeat_few_values(Row images, std::size_t n, double* sorted) {
    FewValues values;
    if (!values.count(n, images)) {
        return false;
    }
    values.for_each([=](std::uint64_t image, std::uint64_t first, std::uint64_t end) {
        std::fill(sorted + first, sorted + end, value_of(image));
    });
    return true;
}

/// The permutation that sorts x if it is in order; false otherwise. One pass, which goes at the
/// speed of memory, instead of two.
bool order_ascending(const double* x, std::size_t n, std::uint32_t* order) {
    std::uint64_t last = 0;
    std::uint32_t position = 0;
    return for_words_while(0, n, tie_images_of(x), [&](std::uint64_t word) {
               order[position] = position;
               ++position;
               return std::exchange(last, word) <= word;
           }) == n;
}

/// The permutation that sorts a sample of few values; false, with nothing written, for others.
[[gnu::noinline]] bool order_few_values(const double* x, std::size_t n, std::uint32_t* order) {
    const auto images = tie_images_of(x);
    FewValues places;
    if (!places.count(n, images)) {
        return false;
    }
    places.for_each([&](std::uint64_t image, std::uint64_t first, std::uint64_t /*end*/) {
        places[image] = first;
    });
    std::uint32_t position = 0;
    for_each_word(0, n, images, [&](std::uint64_t image) {
        store_and_prefetch(order + places[image]++, position++);
    });
    return true;
}

/// The sorting permutation without a work array, for samples that suit one of these ways; false,
/// with anything in `order`, for others. They read x between what they write.
bool order_directly(const double* x, std::uint32_t n, std::uint32_t* order) {
    const auto position = [](std::size_t i) { return static_cast<std::uint32_t>(i); };
    const auto less = [=](std::uint32_t a, std::uint32_t b) { return x[a] < x[b]; };
    return (n <= kSmallSample && sort_small(x, n, order, position, less)) ||
           order_ascending(x, n, order) || order_few_values(x, n, order);
}

/// A sorted copy of a small sample; false, with anything in it, where it is better sorted by words.
bool sort_small_sample(const double* x, std::size_t n, double* sorted) {
    const auto less = [](double a, double b) { return a < b; };
    if (n == 0 || sort_small(
                      x, n, sorted, [=](std::size_t i) { return x[i]; }, less)) {
        return true;
    }
    if (n > kFewWords) {
        return false;
    }
    std::copy_n(x, n, sorted);
    std::sort(sorted, sorted + move_nan_back(sorted, n));
    return true;
}

}  // namespace

SortedCopy::SortedCopy(const double* x, std::uint32_t n) : m_size(n) {
    if (n < kTinySample) {
        m_values = m_few.data();
    } else {
        m_buffer = WordBuffer(n <= kFewWords ? n : with_scratch(n));
        m_values = m_buffer.doubles();
    }
    double* const sorted = m_values;
    if (sorted == nullptr || (n <= kSmallSample && sort_small_sample(x, n, sorted))) {
        return;
    }
    const auto image = images_of(x);
    const WordRange range = range_of(n, image);
    if (range.isAscending) {
        std::copy_n(x, n, sorted);
        return;
    }
    if (repeat_few_values(image, n, sorted)) {
        return;
    }
    std::uint64_t* const words = m_buffer.words();
    Scratch scratch(n, words + n);
    const auto to_values = [=](std::size_t first, std::size_t end) {
        for (std::size_t i = first; i < end; ++i) {
            sorted[i] = value_of(words[i]);
        }
    };
    if (!sort_from(n, image, 0, range, words, scratch, to_values)) {
        m_values = nullptr;
    }
}

SortedOrder::SortedOrder(const double* x, std::uint32_t n)
    : m_x(x),
      m_size(n),
      m_positionBits(static_cast<unsigned>(std::bit_width(n))),
      m_buffer(with_scratch(n) + n / 64 + 1) {
    if (!m_buffer || n == 0) {
        return;
    }
    const bool isSorted = (n <= kSmallSample && sort_by_value()) || sort_by_image();
    if (!isSorted) {
        m_buffer.release();
    }
}

bool SortedOrder::sort_by_value() {
    std::uint64_t* const positions = m_buffer.words();
    const double* const x = m_x;
    const auto less = [=](std::uint64_t a, std::uint64_t b) { return x[a] < x[b]; };
    if (!sort_small(
            x, m_size, positions, [](std::size_t i) { return std::uint64_t{i}; }, less)) {
        return false;
    }
    mark(0, m_size, [=](std::size_t i) { return i > 0 && x[positions[i - 1]] == x[positions[i]]; });
    return true;
}

/// False when the scratch space could not be allocated.
bool SortedOrder::sort_by_image() {
    const auto images = tie_images_of(m_x);
    const WordRange range = range_of(m_size, images);
    m_prefixDecides = all_share_trailing_bits(range.smallest, lost_bits(range));
    if (const double scale = m_prefixDecides ? 0.0 : decimal_scale(m_x, m_size); scale > 0.0) {
        const auto step = [=](double value, std::size_t) { return decimal_step(value, scale); };
        const WordRange steps{step(value_of_tie_image(range.smallest), 0),
                              step(value_of_tie_image(range.largest), 0), false};
        if (lost_bits(steps) == 0) {
            m_prefixDecides = true;
            return sort_words_of(WordRow(m_x, step), steps);
        }
    }
    return sort_words_of(images, range);
}

/// Trailing bits of words of that range that do not fit into a word beside a position.
unsigned SortedOrder::lost_bits(const WordRange& range) const {
    const auto width = static_cast<unsigned>(std::bit_width(range.largest - range.smallest));
    return std::max(width + m_positionBits, 64U) - 64;
}

template <class Row>
bool SortedOrder::sort_words_of(Row row, const WordRange& range) {
    const auto pack_word = [origin = range.smallest, lost = lost_bits(range),
                            positionBits = m_positionBits](std::uint64_t word, std::uint64_t i) {
        return (word - origin) >> lost << positionBits | i;
    };
    const WordRow packed(m_x, [=](double, std::size_t i) { return pack_word(row(i), i); });
    const WordRange packedRange{0, pack_word(range.largest, m_size - 1), false};
    if (range.largest == kNaNImage) {
        m_nanStart = packedRange.largest & ~position_mask();
    }
    Scratch scratch(m_size, marks() + m_size / 64 + 1);
    return sort_from(m_size, packed, m_positionBits, packedRange, m_buffer.words(), scratch,
                     [&](std::size_t first, std::size_t end) {
                         mark_repeats(first, end);
                         if (!m_prefixDecides) {
                             settle_repeats(first, end, scratch.words());
                         }
                     });
}

/// Marks those i of [first, end) for which is_tied(i), for ascending parts that follow each other.
/// Whether values are tied is hard to predict: no branch depends on it.
template <class IsTied>
void SortedOrder::mark(std::size_t first, std::size_t end, IsTied is_tied) {
    while (first < end) {
        std::uint64_t& word = marks()[first / 64];
        const std::uint64_t before = first % 64 == 0 ? 0 : word;
        const std::size_t wordEnd = std::min(end, first - first % 64 + 64);
        std::uint64_t bits = 0;
        for (; first < wordEnd; ++first) {
            bits = bits >> 1U | std::uint64_t{is_tied(first) ? 1U : 0U} << 63U;
        }
        word = before | bits >> (0 - wordEnd) % 64;
    }
}

/// Marks each i of [first, end) whose prefix is that of i - 1, except the prefix of NaN.
void SortedOrder::mark_repeats(std::size_t first, std::size_t end) {
    const std::uint64_t* const words = m_buffer.words();
    std::uint64_t last = first > 0 ? words[first - 1] : ~words[0];
    mark(first, end, [&, words, mask = position_mask(), nanStart = m_nanStart](std::size_t i) {
        const std::uint64_t next = words[i];
        return (next ^ std::exchange(last, next)) <= mask && next < nanStart;
    });
}

/// Words that agree in their prefix may stand for different values: puts those in order, and takes
/// their marks off. No run of such words goes beyond [first, end).
void SortedOrder::settle_repeats(std::size_t first, std::size_t end, std::uint64_t* scratch) {
    constexpr std::size_t kAhead = 16;  // values all over x are asked for this much earlier
    while (first < end) {
        const std::size_t base = first - first % 64;
        std::uint64_t left = marks()[first / 64] >> (first % 64) << (first % 64);
        std::uint64_t different = 0;
        first = std::min(end, base + 64);
        for (; left != 0; left &= left - 1) {
            const std::size_t i = base + static_cast<std::size_t>(std::countr_zero(left));
            __builtin_prefetch(m_x + (*this)[std::min<std::size_t>(i + kAhead, m_size - 1)]);
            const std::uint64_t before = image(i - 1);
            const std::uint64_t here = image(i);
            if (here < before) {
                break;
            }
            different |= std::uint64_t{here != before ? 1U : 0U} << (i % 64);
        }
        marks()[base / 64] &= ~different;
        if (left != 0) {
            first = settle_run(base + static_cast<std::size_t>(std::countr_zero(left)), scratch);
        }
    }
}

/// Whether all images agree with that one in so many trailing bits. Where they do not, two or three
/// values tell as a rule.
bool SortedOrder::all_share_trailing_bits(std::uint64_t image, unsigned bits) const {
    const std::uint64_t trailing = (kOne << bits) - 1;
    return std::all_of(m_x, m_x + m_size, [=](double value) {
        return ((tie_image_of(value) ^ image) & trailing) == 0;
    });
}

/// Sorts and marks the run of words that agree with the i-th in their prefix; returns its end.
std::size_t SortedOrder::settle_run(std::size_t i, std::uint64_t* scratch) {
    std::size_t first = i;
    while (first > 0 && prefix(first - 1) == prefix(i)) {
        --first;
    }
    std::size_t end = i + 1;
    while (end < m_size && prefix(end) == prefix(i)) {
        ++end;
    }
    sort_run(first, end - first, scratch);
    for (i = first + 1; i < end; ++i) {
        const std::uint64_t bit = kOne << (i % 64);
        std::uint64_t& word = marks()[i / 64];
        word = image(i - 1) == image(i) ? word | bit : word & ~bit;
    }
    return end;
}

void SortedOrder::sort_run(std::size_t first, std::size_t size, std::uint64_t* scratch) {
    const WordRange range = range_of(
        size, WordRow(m_buffer.words() + first,
                      [=, this](std::uint64_t, std::size_t i) { return image(first + i); }));
    // The images of a run differ in their trailing bits only, and these do fit beside a position.
    const std::uint64_t common = prefix(first);
    std::uint64_t* const words = m_buffer.words() + first;
    for (std::size_t i = 0; i < size; ++i) {
        words[i] = pack(image(first + i) - range.smallest, (*this)[first + i]);
    }
    sort_words(words, size, scratch, m_positionBits);
    for (std::size_t i = 0; i < size; ++i) {
        words[i] = pack(common, (*this)[first + i]);
    }
}

std::uint64_t SortedOrder::image(std::size_t i) const { return tie_image_of(m_x[(*this)[i]]); }

void write_order(const double* x, std::uint32_t n, std::uint32_t* order) {
    if (n == 0 || (!share_memory(x, n, order, n) && order_directly(x, n, order))) {
        return;
    }
    if (const SortedOrder sorted(x, n); sorted) {
        for (std::size_t i = 0; i < n; ++i) {
            order[i] = sorted[i];
        }
        return;
    }
    std::iota(order, order + n, 0U);
    std::sort(order, order + n, [=](std::uint32_t a, std::uint32_t b) {
        return std::pair(tie_image_of(x[a]), a) < std::pair(tie_image_of(x[b]), b);
    });
}

}  // namespace vela::descriptive
