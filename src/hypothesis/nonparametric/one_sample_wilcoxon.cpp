#include "vela/v0/one_sample_wilcoxon.hpp"

#include "conventions/fp_environment.hpp"
#include "conventions/status.hpp"
#include "descriptive/ordering.hpp"
#include "hypothesis/nonparametric/clear_results.hpp"
#include "hypothesis/nonparametric/pairwise_selection.hpp"
#include "hypothesis/nonparametric/rank_interval.hpp"
#include "hypothesis/normal_reference.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <vector>

namespace vela::v0 {

using conventions::QuietArithmetic;
using descriptive::SortedCopy;
using hypothesis::NormalReference;
using hypothesis::PairSums;
using hypothesis::RankRanges;
using hypothesis::ValueRanges;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// The observations in order; not there when they are none or not all finite.
class Sample {
public:
    Sample(const double* x, std::uint32_t n) : m_sorted(x, n) {
        if (!m_sorted) {
            throw std::bad_alloc();
        }
    }

    bool is_usable() const { return size() > 0 && hypothesis::all_finite(m_sorted); }
    const double* begin() const { return m_sorted.values(); }
    const double* end() const { return begin() + size(); }
    std::uint32_t size() const { return m_sorted.size(); }
    double largest_magnitude() const {
        return std::max(std::fabs(m_sorted(1)), std::fabs(m_sorted(size())));
    }
    /// For sums that would overflow.
    std::vector<double> halves() const {
        std::vector<double> halves(begin(), end());
        for (double& half : halves) {
            half *= 0.5;
        }
        return halves;
    }

private:
    SortedCopy m_sorted;
};

ValueRanges sums_of(const double* sorted, std::uint32_t n, const RankRanges& ranks) {
    ValueRanges values;
    if (!select_sums(PairSums::triangle(sorted, n), ranks, values)) {
        throw std::bad_alloc();
    }
    return values;
}

/// The Walsh averages of these ranks, rounded once: a sum is halved, but taken of halves where it
/// would overflow.
ValueRanges walsh_averages(const Sample& sample, const RankRanges& ranks) {
    ValueRanges averages = sums_of(sample.begin(), sample.size(), ranks);
    bool hasOverflow = false;
    for (auto& [first, last] : averages) {
        first *= 0.5;
        last *= 0.5;
        hasOverflow = hasOverflow || !std::isfinite(first) || !std::isfinite(last);
    }
    if (hasOverflow) {
        const ValueRanges ofHalves = sums_of(sample.halves().data(), sample.size(), ranks);
        for (std::size_t s = 0; s < averages.size(); ++s) {
            auto& [first, last] = averages[s];
            first = std::isfinite(first) ? first : ofHalves[s].first;
            last = std::isfinite(last) ? last : ofHalves[s].last;
        }
    }
    return averages;
}

/// Standard deviation of the number of Walsh averages above the median of n observations.
double deviation(double n) { return std::sqrt(n * (n + 1.0) * (2.0 * n + 1.0) / 24.0); }

void write_interval(OneSampleWilcoxon* record, const Sample& sample, double confidence,
                    IntervalType type) {
    const std::uint32_t n = sample.size();
    if (n == 1) {
        record->estimate = *sample.begin();
        return;
    }
    const std::uint64_t size = PairSums::triangle(sample.begin(), n).size();
    const double mean = static_cast<double>(size) / 2.0;
    const auto interval = hypothesis::make_rank_interval(
        size, deviation(n), confidence, type, [mean](double position) {
            const double k = position < 0.0 ? 0.0 : std::floor(position);
            return mean < k + 1.0 ? k - 1.0 : k;
        });
    const ValueRanges averages = walsh_averages(sample, interval.ranks);
    record->estimate = interval.estimate(averages);
    if (std::isnan(interval.achievedConfidence)) {
        return;  // a confidence without a quantile has no limits, open ones included
    }
    record->achievedConfidence = interval.achievedConfidence;
    record->lower = type == IntervalType::UpperBound ? -kInfinity : interval.lower(averages);
    record->upper = type == IntervalType::LowerBound ? kInfinity : interval.upper(averages);
}

/// W, and record->count without the observations at the hypothesised median.
void write_statistic(OneSampleWilcoxon* record, const Sample& sample, double median) {
    // What 8 units of rounding make equal.
    const double tolerance = std::max(sample.largest_magnitude() * 0x1p-49, 1e-12);
    const auto count_if = [&](auto predicate) {
        return static_cast<std::uint32_t>(std::count_if(sample.begin(), sample.end(), predicate));
    };
    const std::uint32_t zeros =
        count_if([=](double x) { return median - tolerance < x && x < median + tolerance; });
    record->count = sample.size() - zeros;
    if (record->count < 1 || std::isnan(median)) {
        return;
    }
    const bool overflows = sample.largest_magnitude() > std::numeric_limits<double>::max() / 4.0;
    const double scale = overflows ? 0.5 : 1.0;
    const std::vector<double> halves = overflows ? sample.halves() : std::vector<double>();
    const PairSums sums =
        PairSums::triangle(overflows ? halves.data() : sample.begin(), sample.size());
    const double center = 2.0 * (scale * median);
    const double reach = scale * tolerance;
    const auto [below, upTo] =
        count_at_most<2>(sums, {std::nextafter(center - reach, -kInfinity), center + reach});

    const double z = zeros;
    const double above = count_if([=](double x) { return x > median + tolerance; });
    record->statistic = static_cast<double>(sums.size() - upTo) +
                        static_cast<double>(upTo - below) / 2.0 - z * (above + (z + 1.0) / 4.0);
}

void write_p_value(OneSampleWilcoxon* record, AlternativeHypothesis alternative) {
    const double n = record->count;
    const double mean = n * (n + 1.0) / 4.0;
    const double distance = hypothesis::corrected_distance(record->statistic, mean, alternative);
    // No correction of the variance for ties.
    record->pValue = NormalReference{}.p_value(distance / deviation(n), alternative);
}

}  // namespace

int RunKroOneSampleWilcoxon(OneSampleWilcoxon* record, const double* x, double confidence,
                            IntervalType type) {
    const QuietArithmetic quiet;
    hypothesis::clear_results(record, &OneSampleWilcoxon::count);
    const Sample sample(x, record->count);
    if (sample.is_usable()) {
        write_interval(record, sample, confidence, type);
    }
    return conventions::kSuccess;
}

int RunKroOneSampleWilcoxon(OneSampleWilcoxon* record, const double* x, double confidence,
                            IntervalType type, AlternativeHypothesis alternative,
                            double hypothesizedMedian) {
    const QuietArithmetic quiet;
    hypothesis::clear_results(record, &OneSampleWilcoxon::count);
    const Sample sample(x, record->count);
    if (sample.is_usable()) {
        write_interval(record, sample, confidence, type);
        write_statistic(record, sample, hypothesizedMedian);
        write_p_value(record, alternative);
    }
    return conventions::kSuccess;
}

}  // namespace vela::v0
