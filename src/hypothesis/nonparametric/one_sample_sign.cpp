#include "vela/v0/one_sample_sign.hpp"

#include "conventions/call_frame.hpp"
#include "conventions/status.hpp"
#include "descriptive/median_interval.hpp"
#include "descriptive/ordering.hpp"
#include "distributions/discrete_p_values.hpp"
#include "hypothesis/nonparametric/clear_results.hpp"
#include "hypothesis/normal_reference.hpp"

#include <cmath>
#include <limits>

namespace vela::v0 {

using conventions::QuietArithmetic;
using descriptive::MedianInterval;
using descriptive::MedianIntervals;
using descriptive::MedianLimits;
using descriptive::SignDistribution;

namespace {

bool is_valid(IntervalType type) {
    return type == IntervalType::UpperBound || type == IntervalType::TwoSided ||
           type == IntervalType::LowerBound;
}

/// Without observations d is 0, although not even the inner interval has ends.
int status_of(const MedianInterval& interval) {
    switch (interval.intervals) {
        case MedianIntervals::kBoth: break;
        case MedianIntervals::kInnerOnly: return conventions::kInnerIntervalOnly;
        case MedianIntervals::kOuterOnly: return conventions::kOuterIntervalOnly;
        case MedianIntervals::kNone:
            return interval.count == 0 ? conventions::kInnerIntervalOnly : conventions::kSuccess;
    }
    return conventions::kSuccess;
}

void write_limits(OneSampleSign* record, const MedianLimits& limits) {
    record->innerLower = limits.innerLower;
    record->interpolatedLower = limits.interpolatedLower;
    record->outerLower = limits.outerLower;
    record->innerUpper = limits.innerUpper;
    record->interpolatedUpper = limits.interpolatedUpper;
    record->outerUpper = limits.outerUpper;
}

void write_coverage(OneSampleSign* record, const MedianInterval& interval, IntervalType type) {
    const double n = interval.count;
    const double d = interval.depth;
    const bool fromAbove = type == IntervalType::UpperBound;
    if (interval.has_inner()) {
        record->innerPosition = fromAbove ? n - d : d + 1.0;
    }
    if (interval.has_outer()) {
        record->outerPosition = fromAbove ? n - d + 1.0 : d;
    }
    const bool hasOneEnd = type != IntervalType::TwoSided;
    const auto coverage = [=](double c) { return hasOneEnd ? 1.0 - (1.0 - c) / 2.0 : c; };
    record->innerConfidence = coverage(interval.innerConfidence);
    record->outerConfidence = coverage(interval.outerConfidence);
}

void open_one_end(OneSampleSign* record, const MedianInterval& interval, IntervalType type) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    if (type == IntervalType::UpperBound) {
        if (interval.has_inner()) {
            record->innerLower = -infinity;
        }
        if (interval.has_outer()) {
            record->interpolatedLower = -infinity;
            record->outerLower = -infinity;
        }
    }
    if (type == IntervalType::LowerBound) {
        if (interval.has_inner()) {
            record->innerUpper = infinity;
        }
        if (interval.has_outer()) {
            record->outerUpper = infinity;
        }
        // Beside an outer interval alone the interpolated upper end stays, unlike the lower one of
        // an upper bound: callers rely on it.
        if (interval.intervals == MedianIntervals::kBoth) {
            record->interpolatedUpper = infinity;
        }
    }
}

/// Everything but the test.
int write_intervals(OneSampleSign* record, const double* x, double confidence, IntervalType type,
                    SignDistribution distribution) {
    hypothesis::clear_results(record, &OneSampleSign::count);
    if (!is_valid(type)) {
        return conventions::kInvalidIntervalType;
    }
    const double twoSidedConfidence =
        type == IntervalType::TwoSided ? confidence : 1.0 - 2.0 * (1.0 - confidence);
    const std::uint32_t n = record->count;
    const MedianInterval interval =
        descriptive::make_median_interval(n, twoSidedConfidence, distribution);
    const descriptive::QuantilePosition median = descriptive::median_position(n);
    const bool isDone = descriptive::with_order_statistics(
        x, n,
        [&](auto want) {
            median.for_each_rank(want);
            descriptive::for_each_limit_rank(interval, want);
        },
        [&](const auto& sample) {
            record->median = median.value_in(sample);
            write_limits(record, descriptive::median_limits(interval, sample));
        });
    if (!isDone) {
        return conventions::kOutOfMemory;
    }
    write_coverage(record, interval, type);
    open_one_end(record, interval, type);
    return status_of(interval);
}

double sign_p_value(double above, std::uint32_t trials, SignDistribution distribution,
                    AlternativeHypothesis alternative) {
    if (trials == 0) {
        return 1.0;
    }
    if (distribution == SignDistribution::kNormal) {
        const double distance = hypothesis::corrected_distance(above, trials / 2.0, alternative);
        const double z = distance / std::sqrt(trials / 4.0);
        return hypothesis::NormalReference().p_value(z, alternative);
    }
    if (trials > std::uint32_t{std::numeric_limits<int>::max()}) {
        return conventions::kNaN;
    }
    return conventions::quiet_value(distributions::binomial_p_value, above,
                                    static_cast<int>(trials), 0.5,
                                    hypothesis::alternative_code(alternative));
}

void write_test(OneSampleSign* record, const double* x, SignDistribution distribution,
                AlternativeHypothesis alternative, double hypothesizedMedian) {
    std::uint32_t below = 0;
    std::uint32_t above = 0;
    for (std::uint32_t i = 0; i < record->count; ++i) {
        below += x[i] < hypothesizedMedian ? 1U : 0U;
        above += x[i] > hypothesizedMedian ? 1U : 0U;
    }
    record->below = below;
    record->equal = record->count - below - above;
    record->above = above;
    record->pValue = sign_p_value(above, below + above, distribution, alternative);
}

int write_intervals_and_test(OneSampleSign* record, const double* x, double confidence,
                             IntervalType type, SignDistribution distribution,
                             AlternativeHypothesis alternative, double hypothesizedMedian) {
    const int status = write_intervals(record, x, confidence, type, distribution);
    if (status != conventions::kInvalidIntervalType && status != conventions::kOutOfMemory) {
        write_test(record, x, distribution, alternative, hypothesizedMedian);
    }
    return status;
}

}  // namespace

int RunOneSampleSign(OneSampleSign* record, const double* x, double confidence, IntervalType type) {
    const QuietArithmetic quiet;
    return write_intervals(record, x, confidence, type, SignDistribution::kBinomial);
}

int RunOneSampleSign(OneSampleSign* record, const double* x, double confidence, IntervalType type,
                     AlternativeHypothesis alternative, double hypothesizedMedian) {
    const QuietArithmetic quiet;
    return write_intervals_and_test(record, x, confidence, type, SignDistribution::kBinomial,
                                    alternative, hypothesizedMedian);
}

int RunKroOneSampleSign(OneSampleSign* record, const double* x, double confidence,
                        IntervalType type) {
    const QuietArithmetic quiet;
    return write_intervals(record, x, confidence, type,
                           descriptive::kro_sign_distribution(record->count));
}

int RunKroOneSampleSign(OneSampleSign* record, const double* x, double confidence,
                        IntervalType type, AlternativeHypothesis alternative,
                        double hypothesizedMedian) {
    const QuietArithmetic quiet;
    return write_intervals_and_test(record, x, confidence, type,
                                    descriptive::kro_sign_distribution(record->count), alternative,
                                    hypothesizedMedian);
}

}  // namespace vela::v0
