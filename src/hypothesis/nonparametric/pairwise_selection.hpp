#ifndef VELA_HYPOTHESIS_NONPARAMETRIC_PAIRWISE_SELECTION_HPP
#define VELA_HYPOTHESIS_NONPARAMETRIC_PAIRWISE_SELECTION_HPP

#include "hypothesis/nonparametric/pair_sums.hpp"

#include <array>
#include <cstddef>
#include <cstdint>

namespace vela::hypothesis {

/// Two ranks from 1, or the sums that have them; first <= last.
template <class T>
struct Range {
    T first;
    T last;
};

/// Two limits of an interval and an estimate are found together.
inline constexpr std::size_t kRanges = 3;
using RankRanges = std::array<Range<std::uint64_t>, kRanges>;
using ValueRanges = std::array<Range<double>, kRanges>;

/// values[r] = the sums whose ranks among all are ranks[r], a zero without sign. False when memory
/// could not be allocated. Runs inside the caller's QuietArithmetic.
bool select_sums(const PairSums& sums, const RankRanges& ranks, ValueRanges& values);

}  // namespace vela::hypothesis

#endif
