#ifndef VELA_DESCRIPTIVE_MEDIAN_INTERVAL_HPP
#define VELA_DESCRIPTIVE_MEDIAN_INTERVAL_HPP

#include "conventions/quiet_nan.hpp"
#include "descriptive/quantiles.hpp"

#include <cstdint>

/// The interval for a median that the sign test gives: order statistics whose coverage is binomial,
/// and the interpolation between the two neighbouring ones (Hettmansperger & Sheather 1986).
namespace vela::descriptive {

/// Distribution of the number of observations below the median.
enum class SignDistribution { kBinomial, kNormal };

/// Up to this many observations a `Kro` procedure uses the binomial distribution.
inline constexpr std::uint32_t kMostForBinomial = 50;

inline SignDistribution kro_sign_distribution(std::uint32_t n) {
    return n <= kMostForBinomial ? SignDistribution::kBinomial : SignDistribution::kNormal;
}

/// Which of the two intervals exist: the outer one [x(d), x(n - d + 1)], whose coverage is at least
/// the confidence, and the inner one [x(d + 1), x(n - d)], whose coverage is below it.
enum class MedianIntervals {
    kNone,       // the confidence has no quantile, or leads out of the sample
    kBoth,       // 0 < d < n / 2
    kInnerOnly,  // d = 0: not even the range of the sample covers enough
    kOuterOnly   // d >= n / 2: inside there is no more than the sample median
};

/// The interval before the data is looked at.
struct MedianInterval {
    std::uint32_t count = 0;
    MedianIntervals intervals = MedianIntervals::kNone;
    std::uint32_t depth = 0;  ///< d
    double innerConfidence = conventions::kNaN;
    double outerConfidence = conventions::kNaN;
    double fraction = conventions::kNaN;  ///< of the way inward at which the interpolated ends lie

    bool has_inner() const {
        return intervals == MedianIntervals::kBoth || intervals == MedianIntervals::kInnerOnly;
    }
    bool has_outer() const {
        return intervals == MedianIntervals::kBoth || intervals == MedianIntervals::kOuterOnly;
    }
};

/// The intervals at `confidence` (two-sided; below 0 for a one-sided one below 1/2) for n
/// observations. Runs inside the caller's QuietArithmetic.
MedianInterval make_median_interval(std::uint32_t n, double confidence,
                                    SignDistribution distribution);

/// The ends in a sample; NaN where an interval does not exist.
struct MedianLimits {
    double innerLower = conventions::kNaN;
    double innerUpper = conventions::kNaN;
    double interpolatedLower = conventions::kNaN;
    double interpolatedUpper = conventions::kNaN;
    double outerLower = conventions::kNaN;
    double outerUpper = conventions::kNaN;
};

/// Calls want(k) for every order statistic x(k) that median_limits() will read.
template <class Want>
void for_each_limit_rank(const MedianInterval& interval, Want want) {
    const std::uint32_t n = interval.count;
    const std::uint32_t d = interval.depth;
    if (interval.has_inner()) {
        want(d + 1);
        want(n - d);
    }
    if (interval.has_outer()) {
        want(d);
        want(n - d + 1);
    }
    if (interval.intervals == MedianIntervals::kOuterOnly) {
        median_position(n).for_each_rank(want);
    }
}

/// `sample` maps a rank k to x(k).
template <class Sample>
MedianLimits median_limits(const MedianInterval& interval, const Sample& sample) {
    const std::uint32_t n = interval.count;
    const std::uint32_t d = interval.depth;
    MedianLimits limits;
    if (interval.has_inner()) {
        limits.innerLower = sample(d + 1);
        limits.innerUpper = sample(n - d);
    }
    if (interval.has_outer()) {
        limits.outerLower = sample(d);
        limits.outerUpper = sample(n - d + 1);
        const bool towardMedian = !interval.has_inner();
        const double median = towardMedian ? median_position(n).value_in(sample) : 0.0;
        const double lower = towardMedian ? median : limits.innerLower;
        const double upper = towardMedian ? median : limits.innerUpper;
        limits.interpolatedLower =
            limits.outerLower + interval.fraction * (lower - limits.outerLower);
        limits.interpolatedUpper =
            limits.outerUpper + interval.fraction * (upper - limits.outerUpper);
    }
    return limits;
}

}  // namespace vela::descriptive

#endif
