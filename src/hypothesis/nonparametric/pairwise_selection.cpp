// Order statistics of all pairs of n rows and m columns by a few walks of n + m steps.
//
// A walk counts the sums within two thresholds, the ends of a band, and collects those between
// them on its way. A narrow band that holds the wanted sum settles it.
//
// The bands come from the same problem with fewer rows and columns, solved before: its table
// estimates a rank well, because only the blocks that the threshold crosses are in doubt, and the
// walk itself tells how well. Nothing in this depends on the distribution or the scale of the data,
// and among ties a band narrows to one value. A band that holds too many sums leaves a sample of
// them, whose quantiles are the next band; one that misses is moved. Every walk takes something off
// the range of representable numbers in which the sum is known to be, and after kGuidedWalks it is
// a third, so the search ends for every input.

#include "hypothesis/nonparametric/pairwise_selection.hpp"

#include "descriptive/ordered_image.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vela::hypothesis {
namespace {

using descriptive::image_of;
using descriptive::kPlusInfinityImage;
using descriptive::kZeroImage;
using descriptive::value_of;
using descriptive::WordBuffer;

// Rows of a table for one row of the coarser one: more makes the coarser tables cheaper and the
// bands that they give wider.
constexpr double kRatio = 4.0;
// Columns are thinned out more than rows, by the golden ratio: where a threshold runs parallel to
// the anti-diagonals, as for symmetric samples, it would else cut every block in the same way.
constexpr double kGolden = 1.6180339887498949;
constexpr std::uint64_t kGoldenTurn = 0x9E3779B97F4A7C15;  // 2^64 (kGolden - 1)
// A table of at most this many sums needs no coarser one.
constexpr std::uint64_t kFewSums = 512;
// A side of a table is not made shorter than this.
constexpr std::uint32_t kShortestSide = 16;
// Half the widths of bands: in units of the error to expect, see Staircase, and in units of the
// square root of a sample's size, three standard deviations of a quantile. Narrower bands miss more
// often, wider ones collect more.
constexpr double kStaircaseMargin = 0.75;
constexpr double kSampleMargin = 1.5;
constexpr int kGuidedWalks = 16;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Ordered images of doubles; the sums in a band are above `low` and not above `high`.
struct Band {
    std::uint64_t low;
    std::uint64_t high;

    bool operator==(const Band&) const = default;
    bool is_empty() const { return low >= high; }
    bool has_one_value() const;
};
using Bands = std::array<Band, kRanges>;

constexpr Band kEverything{0, kPlusInfinityImage - 1};
constexpr Band kNoBand{0, 0};

/// Both zeros are one number, whose image is that of 0.0.
std::uint64_t unsigned_zero(std::uint64_t image) {
    return image == kZeroImage - 1 ? kZeroImage : image;
}
/// The image of the next smaller number.
std::uint64_t image_before(std::uint64_t image) {
    const std::uint64_t step = image == kZeroImage ? 2 : 1;
    return image < step ? 0 : image - step;
}

bool Band::has_one_value() const { return low == image_before(high); }

/// The sums strictly between two sums, or, if there is no room, the ones equal to the first. The
/// walk knows no threshold of +infinity: from the largest number the search goes on to it.
Band band_between(double first, double last) {
    const std::uint64_t low = std::min(unsigned_zero(image_of(first)), kPlusInfinityImage - 1);
    const std::uint64_t high = unsigned_zero(image_of(last));
    return high - low > 1 ? Band{low, image_before(high)} : Band{image_before(low), low};
}

/// The sums of a band in the order of the anti-diagonals, or, when they are too many, one out of
/// every `stride` of them, so that they cover the band evenly. Which one changes by the golden
/// ratio: an anti-diagonal often meets the same rows as the one before, and where one summand rules
/// the sum, a fixed place would see only some of these rows, with all their sums.
struct Collected {
    double* values;
    std::size_t capacity;
    std::size_t size = 0;
    std::uint64_t stride = 1;
    std::uint64_t place = 0;  // of the one to be taken among its stride
    std::uint64_t skip = 0;   // sums of the band before it
    std::uint64_t turn = 0;   // in units of 2^-64

    void add(const AntiDiagonal& diagonal, std::uint64_t first, std::uint64_t end) {
        std::uint64_t row = first + skip;
        while (row < end) {
            if (size == capacity) {
                thin_out();
            }
            values[size++] = diagonal[row];
            row += stride - place;
            place = next_place(stride);
            row += place;
        }
        skip = row - end;
    }
    void thin_out() {
        size = capacity / 2;
        for (std::size_t i = 0; i < size; ++i) {
            values[i] = values[2 * i + next_place(2)];
        }
        stride *= 2;
    }
    std::uint64_t next_place(std::uint64_t places) {
        turn += kGoldenTurn;
        return (turn >> 32U) * places >> 32U;
    }
    bool is_complete() const { return stride == 1; }

    /// The value of a rank from 0; changes the order of the values.
    double select(std::size_t rank) const {
        std::nth_element(values, values + rank, values + size);
        return values[rank];
    }
};

/// How far a rank that is estimated from a coarse table may be off. Where a threshold crosses `run`
/// columns in one row, or rows in one column, the place of that row in its block decides about a
/// part of as many cells; the errors of different runs are independent.
struct Staircase {
    std::uint64_t start = 0;
    std::uint64_t reached = 0;
    std::uint64_t wasRow = 0;
    std::uint64_t squares = 0;

    // Without branches, which no processor could foresee.
    void go_on(std::uint64_t step, std::uint64_t next) {
        const std::uint64_t isRow = next - reached;
        const std::uint64_t isTurn = 0 - (isRow ^ wasRow);  // all bits or none
        const std::uint64_t run = step - start;
        squares += run * run & isTurn;
        start += run & isTurn;
        wasRow = isRow;
        reached = next;
    }
    double error(std::uint64_t end) const {
        return std::sqrt(static_cast<double>(squares + (end - start) * (end - start)));
    }
};

/// What a walk found out about its bands.
struct Findings {
    Bands bands;
    std::array<std::uint64_t, 2 * kRanges> counts;
    std::array<Collected, kRanges> collected;
    std::array<double, kRanges> errors;  // of ranks estimated from a coarse table

    std::uint64_t below(std::size_t r) const { return counts[2 * r]; }
    std::uint64_t up_to(std::size_t r) const { return counts[2 * r + 1]; }
};

/// Memory for the coarser tables and for what walks collect.
class Workspace {
public:
    explicit Workspace(const PairSums& sums)
        : m_capacity(std::min(
              sums.size(), std::uint64_t{4096} + sums.row_count() / 8 + sums.column_count() / 8)),
          m_columnsOffset(coarse_room(sums.row_count())),
          m_collectedOffset(m_columnsOffset + coarse_room(sums.column_count())),
          m_buffer(m_collectedOffset + kRanges * m_capacity) {}

    explicit operator bool() const { return static_cast<bool>(m_buffer); }
    /// Of each band.
    std::size_t capacity() const { return m_capacity; }
    PairSums coarse_table(const PairSums& sums, double ratio) const;
    template <bool kIsCoarse>
    Findings explore(const PairSums& sums, const Bands& bands) const;

private:
    static std::size_t coarse_room(std::uint32_t side) {
        return static_cast<std::size_t>(side / kRatio) + kShortestSide + 2;
    }

    std::size_t m_capacity;
    std::size_t m_columnsOffset;
    std::size_t m_collectedOffset;
    WordBuffer m_buffer;
};

std::uint32_t coarse_side(std::uint32_t side, double ratio) {
    return std::max(std::min(side, kShortestSide), static_cast<std::uint32_t>(side / ratio));
}

/// Every value of `out` is the middle one of a block of `side`, and of the two in the middle now
/// the one and now the other: preferring one would add up over all blocks.
void thin_out(const double* side, std::uint32_t size, double* out, std::uint32_t outSize) {
    const double block = static_cast<double>(size) / outSize;
    double turn = 0.0;
    for (std::uint32_t i = 0; i < outSize; ++i) {
        out[i] = side[static_cast<std::uint32_t>((i + 0.5) * block - 0.5 + turn)];
        turn += kGolden - 1.0;
        turn -= turn >= 1.0 ? 1.0 : 0.0;
    }
}

/// A rectangle with about one row for `ratio` rows; of a triangle one that stands for the square.
PairSums Workspace::coarse_table(const PairSums& sums, double ratio) const {
    const std::uint32_t n = coarse_side(sums.row_count(), ratio);
    const std::uint32_t m = coarse_side(sums.column_count(), ratio * kGolden);
    double* rows = m_buffer.doubles();
    double* columns = m_buffer.doubles() + m_columnsOffset + 1;
    thin_out(sums.rows(), sums.row_count(), rows, n);
    thin_out(sums.columns(), sums.column_count(), columns, m);
    rows[n] = kInfinity;
    columns[-1] = -kInfinity;
    return PairSums::rectangle(rows, n, columns, m);
}

/// A walk along the ends of the bands.
template <bool kIsCoarse>
Findings Workspace::explore(const PairSums& sums, const Bands& bands) const {
    Findings findings{bands, {}, {}, {}};
    std::array<double, 2 * kRanges> thresholds{};
    std::array<bool, kRanges> isCollected{};
    std::array<Staircase, kRanges> staircases;
    for (std::size_t r = 0; r < kRanges; ++r) {
        thresholds[2 * r] = value_of(bands[r].low);
        thresholds[2 * r + 1] = value_of(bands[r].high);
        isCollected[r] = !bands[r].has_one_value();
        findings.collected[r] = {m_buffer.doubles() + m_collectedOffset + r * m_capacity,
                                 m_capacity};
    }
    const auto visit = [&]([[maybe_unused]] std::size_t step, const AntiDiagonal& diagonal,
                           const auto& reached) {
        for (std::size_t r = 0; r < kRanges; ++r) {
            if (reached[2 * r] != reached[2 * r + 1] && isCollected[r]) {
                findings.collected[r].add(diagonal, reached[2 * r], reached[2 * r + 1]);
            }
            if constexpr (kIsCoarse) {
                staircases[r].go_on(step, reached[2 * r]);
            }
        }
    };
    findings.counts = walk(sums, thresholds, visit);
    for (std::size_t r = 0; r < kRanges; ++r) {
        findings.errors[r] = staircases[r].error(sums.step_count());
    }
    return findings;
}

/// The search for one order statistic: what is certain about it, and where to look next.
class Search {
public:
    Search(std::uint64_t rank, std::uint64_t size) : m_rank(rank), m_atMost(size) {}

    bool is_done() const { return m_isDone; }
    double value() const { return m_value + 0.0; }  // no -0.0

    void learn(const Findings& findings) {
        ++m_walks;
        m_next = kNoBand;
        for (std::size_t r = 0; r < kRanges; ++r) {
            cut(findings.bands[r].low, findings.below(r));
            cut(findings.bands[r].high, findings.up_to(r));
        }
        if (m_low == m_high) {
            finish(value_of(m_low));
        }
        for (std::size_t r = 0; r < kRanges && !m_isDone; ++r) {
            const Band& band = findings.bands[r];
            const std::uint64_t below = findings.below(r);
            const std::uint64_t upTo = findings.up_to(r);
            if (below < m_rank && m_rank <= upTo) {
                read(findings.collected[r], m_rank - below, upTo - below);
            } else if (band.is_empty()) {
                continue;
            } else if (m_high == band.low && m_low == 0) {
                const std::uint64_t reach = reach_from(band, below - m_rank, upTo - below);
                m_next = reach < m_high ? Band{m_high - 1 - reach, image_before(m_high)} : kNoBand;
            } else if (m_low == unsigned_zero(band.high + 1) && m_high == kPlusInfinityImage) {
                const std::uint64_t reach = reach_from(band, m_rank - upTo, upTo - below);
                m_next = reach < m_high - m_low ? Band{m_low, m_low + reach} : kNoBand;
            }
        }
    }

    Band next_band(std::size_t capacity) const {
        if (m_atMost - m_below <= capacity) {
            return {image_before(m_low), std::min(m_high, kPlusInfinityImage - 1)};
        }
        if (m_walks < kGuidedWalks) {
            return m_next.is_empty() ? Band{m_low, image_before(m_high)} : m_next;
        }
        const std::uint64_t third = (m_high - m_low - 1) / 3;
        return {m_low + third, m_high - 1 - third};
    }

private:
    /// `count` sums do not exceed the number with this image.
    void cut(std::uint64_t threshold, std::uint64_t count) {
        const std::uint64_t image = unsigned_zero(threshold);
        if (m_rank <= count && image < m_high) {
            m_high = image;
            m_atMost = count;
        } else if (m_rank > count && image >= m_low) {
            m_low = unsigned_zero(image + 1);
            m_below = count;
        }
    }

    /// The sum is number `rank` of the `count` in a band.
    void read(const Collected& collected, std::uint64_t rank, std::uint64_t count) {
        if (collected.is_complete()) {
            finish(collected.select(rank - 1));
            return;
        }
        const auto size = static_cast<double>(collected.size);
        const double place = static_cast<double>(rank) / static_cast<double>(count) * size;
        const double margin = kSampleMargin * std::sqrt(size);
        const auto at = [&](double i) {
            return collected.select(static_cast<std::size_t>(std::clamp(i, 0.0, size - 1.0)));
        };
        const Band next = band_between(at(place - margin), at(place + margin));
        if (m_next.is_empty() || next.high - next.low < m_next.high - m_next.low) {
            m_next = next;
        }
    }

    /// The sum is outside a band of `count` sums and as many as `missing` away: twice as far as
    /// these lead to expect, and no less than 2^-20 of the value: too far costs little.
    static std::uint64_t reach_from(const Band& band, std::uint64_t missing, std::uint64_t count) {
        const double widths =
            2.0 * (1.0 + (static_cast<double>(missing) + 1.0) / (static_cast<double>(count) + 1.0));
        const double reach = static_cast<double>(band.high - band.low + 1) * widths;
        return static_cast<std::uint64_t>(std::clamp(reach, 0x1p32, 0x1p63));
    }

    void finish(double value) {
        m_value = value;
        m_isDone = true;
    }

    std::uint64_t m_rank;
    std::uint64_t m_low = 0;                    // the images of the least and the greatest value
    std::uint64_t m_high = kPlusInfinityImage;  // that the sum may have
    std::uint64_t m_below = 0;                  // sums below m_low
    std::uint64_t m_atMost;                     // sums not above m_high
    Band m_next = kNoBand;
    int m_walks = 0;
    double m_value = 0.0;
    bool m_isDone = false;
};

/// The sums of the ranks that ranks_after(findings of a walk over `bands`) gives, which the bands
/// are likely to hold.
template <bool kIsCoarse, class RanksAfter>
ValueRanges select_in_bands(const Workspace& workspace, const PairSums& sums, Bands bands,
                            RanksAfter ranks_after) {
    Findings findings = workspace.explore<kIsCoarse>(sums, bands);
    const RankRanges ranks = ranks_after(findings);
    const auto search = [&](std::uint64_t rank) { return Search(rank, sums.size()); };
    std::array searches{search(ranks[0].first), search(ranks[1].first), search(ranks[2].first),
                        search(ranks[0].last),  search(ranks[1].last),  search(ranks[2].last)};
    for (;; findings = workspace.explore<kIsCoarse>(sums, bands)) {
        std::size_t open = 0;
        for (Search& next : searches) {
            next.learn(findings);
            if (!next.is_done() && open < kRanges) {
                bands[open] = next.next_band(workspace.capacity());
                open += std::count(bands.begin(), bands.begin() + open, bands[open]) == 0 ? 1 : 0;
            }
        }
        if (open == 0) {
            break;
        }
        std::fill(bands.begin() + open, bands.end(), Band{bands[0].high, bands[0].high});
    }
    ValueRanges values;
    for (std::size_t r = 0; r < kRanges; ++r) {
        values[r] = {searches[r].value(), searches[kRanges + r].value()};
    }
    return values;
}

/// The ranks between which sums of the full table whose ranks are `ranks`, and which are known to
/// be between `bounds`, would be found in a coarse one.
Range<std::uint64_t> coarse_ranks(const PairSums& full, const PairSums& coarse,
                                  const Range<std::uint64_t>& ranks, const Range<double>& bounds,
                                  double error) {
    const auto size = static_cast<double>(coarse.size());
    const double cells = static_cast<double>(full.row_count()) * full.column_count();
    // A triangle is half of the square and half of its diagonal.
    const auto rank_in_rectangle = [&](std::uint64_t rank, double bound) {
        if (!full.is_triangle()) {
            return static_cast<double>(rank);
        }
        const auto isBelow = [](double sum, double x) { return sum < x + x; };
        const double* end = full.rows() + full.row_count();
        const double* above = std::upper_bound(full.rows(), end, bound, isBelow);
        return 2.0 * static_cast<double>(rank) - static_cast<double>(above - full.rows());
    };
    const auto clamp = [&](double rank) {
        return static_cast<std::uint64_t>(std::clamp(rank, 1.0, size));
    };
    const double scale = size / cells;
    const double margin = kStaircaseMargin * error;
    return {clamp(rank_in_rectangle(ranks.first, bounds.last) * scale - margin),
            clamp(rank_in_rectangle(ranks.last, bounds.first) * scale + margin)};
}

double coarsest_ratio(const PairSums& sums) {
    const auto size_at = [&](double ratio) {
        return std::uint64_t{coarse_side(sums.row_count(), ratio)} *
               coarse_side(sums.column_count(), ratio * kGolden);
    };
    double ratio = 1.0;
    while (size_at(ratio) > kFewSums) {
        ratio *= kRatio;
    }
    return ratio;
}

}  // namespace

bool select_sums(const PairSums& sums, const RankRanges& ranks, ValueRanges& values) {
    const Workspace workspace(sums);
    if (!workspace) {
        return false;
    }
    Bands bands;
    bands.fill(kEverything);
    values.fill({-kInfinity, kInfinity});
    for (double ratio = coarsest_ratio(sums); ratio > 1.0; ratio /= kRatio) {
        const PairSums coarse = workspace.coarse_table(sums, ratio);
        const auto ranks_after = [&](const Findings& findings) {
            RankRanges coarseRanks;
            for (std::size_t r = 0; r < kRanges; ++r) {
                coarseRanks[r] =
                    coarse_ranks(sums, coarse, ranks[r], values[r], findings.errors[r]);
            }
            return coarseRanks;
        };
        values = select_in_bands<true>(workspace, coarse, bands, ranks_after);
        std::transform(values.begin(), values.end(), bands.begin(),
                       [](const auto& range) { return band_between(range.first, range.last); });
    }
    values = select_in_bands<false>(workspace, sums, bands, [&](const Findings&) { return ranks; });
    return true;
}

}  // namespace vela::hypothesis
