#ifndef VELA_HYPOTHESIS_NONPARAMETRIC_RANK_INTERVAL_HPP
#define VELA_HYPOTHESIS_NONPARAMETRIC_RANK_INTERVAL_HPP

#include "conventions/quiet_nan.hpp"
#include "hypothesis/nonparametric/pairwise_selection.hpp"
#include "hypothesis/normal_reference.hpp"

#include <cmath>
#include <cstdint>
#include <numeric>

/// The interval of Hodges and Lehmann: order statistics of `size` averages or differences of pairs,
/// and their median, chosen before the data is looked at. The number of pairs on one side of the
/// true location has mean size / 2 and a normal approximation.
namespace vela::hypothesis {

struct RankInterval {
    double achievedConfidence;
    bool hasLower;
    bool hasUpper;
    RankRanges ranks;  ///< lower limit, median, upper limit; the median's where there is no limit

    double estimate(const ValueRanges& values) const {
        return std::midpoint(values[1].first, values[1].last);
    }
    double lower(const ValueRanges& values) const {
        return hasLower ? values[0].first : conventions::kNaN;
    }
    double upper(const ValueRanges& values) const {
        return hasUpper ? values[2].first : conventions::kNaN;
    }
};

/// `omitted` maps mean + quantile * deviation to the number k of pairs that are cut off each side.
template <class Omitted>
RankInterval make_rank_interval(std::uint64_t size, double deviation, double confidence,
                                IntervalType type, Omitted omitted) {
    const NormalReference normal;
    const double mean = static_cast<double>(size) / 2.0;
    const double sides = type == IntervalType::TwoSided ? 2.0 : 1.0;
    const double k = omitted(mean + normal.quantile((1.0 - confidence) / sides) * deviation);
    const double tail = normal.lower_tail((k + 0.5 - mean) / deviation);

    const Range<std::uint64_t> median{(size + 1) / 2, size / 2 + 1};
    RankInterval interval{1.0 - sides * tail, false, false, {median, median, median}};
    if (k + 1.0 <= static_cast<double>(size)) {
        const auto rank = static_cast<std::uint64_t>(k) + 1;
        interval.hasLower = type == IntervalType::TwoSided || type == IntervalType::LowerBound;
        interval.hasUpper = type == IntervalType::TwoSided || type == IntervalType::UpperBound;
        if (interval.hasLower) {
            interval.ranks[0] = {rank, rank};
        }
        if (interval.hasUpper) {
            interval.ranks[2] = {size + 1 - rank, size + 1 - rank};
        }
    }
    return interval;
}

}  // namespace vela::hypothesis

#endif
