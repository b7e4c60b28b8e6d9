#include "vela/v0/mann_whitney.hpp"

#include "conventions/fp_environment.hpp"
#include "conventions/status.hpp"
#include "descriptive/ordering.hpp"
#include "descriptive/quantiles.hpp"
#include "hypothesis/nonparametric/clear_results.hpp"
#include "hypothesis/nonparametric/pairwise_selection.hpp"
#include "hypothesis/nonparametric/rank_interval.hpp"
#include "hypothesis/normal_reference.hpp"

#include <algorithm>
#include <cmath>

namespace vela::v0 {

using conventions::QuietArithmetic;
using descriptive::SortedCopy;
using hypothesis::NormalReference;
using hypothesis::ValueRanges;

namespace {

bool is_constant(const SortedCopy& sample) {
    return sample.size() == 0 || sample(1) == sample(sample.size());
}

/// False when memory could not be allocated.
bool write_interval(MannWhitney* record, const SortedCopy& x, const SortedCopy& y,
                    double confidence, IntervalType type) {
    const std::uint64_t size = std::uint64_t{x.size()} * y.size();
    const double total = static_cast<double>(x.size()) + y.size();
    const double deviation = std::sqrt((total + 1.0) * (static_cast<double>(size) / 2.0) / 6.0);
    const auto interval = hypothesis::make_rank_interval(
        size, deviation, confidence, type,
        [](double position) { return position <= 0.5 ? 0.0 : std::floor(position - 0.5); });
    if (hypothesis::all_finite(x) && hypothesis::all_finite(y)) {
        const hypothesis::Differences differences(x, y);
        ValueRanges values;
        if (!differences || !select_sums(differences.sums(), interval.ranks, values)) {
            return false;
        }
        record->estimate = interval.estimate(values);
        record->lower = interval.lower(values);
        record->upper = interval.upper(values);
    }
    record->achievedConfidence = interval.achievedConfidence;
    return true;
}

/// How the samples lie to each other.
struct Comparisons {
    double greater = 0.0;  ///< pairs with x > y
    double equal = 0.0;    ///< pairs with x == y
    double ties = 0.0;     ///< sum of t^3 - t over the groups of t equal values
};

/// One merge of the samples, group of equal values by group; a NaN compares with nothing.
Comparisons compare(const SortedCopy& x, const SortedCopy& y) {
    const auto end_of_numbers = [](const SortedCopy& sample) {
        const auto isNumber = [](double value) { return value == value; };
        return std::partition_point(sample.values(), sample.values() + sample.size(), isNumber);
    };
    const double* nextX = x.values();
    const double* nextY = y.values();
    const double* const endX = end_of_numbers(x);
    const double* const endY = end_of_numbers(y);
    Comparisons result;
    while (nextX != endX || nextY != endY) {
        const bool isX = nextY == endY || (nextX != endX && *nextX < *nextY);
        const double value = isX ? *nextX : *nextY;
        const auto differs = [=](double other) { return other != value; };
        const double* const startX = nextX;
        const double* const startY = nextY;
        nextX = std::find_if(nextX, endX, differs);
        nextY = std::find_if(nextY, endY, differs);
        const auto inX = static_cast<double>(nextX - startX);
        const auto inY = static_cast<double>(nextY - startY);
        result.equal += inX * inY;
        result.greater += inY * static_cast<double>(endX - nextX);
        const double t = inX + inY;
        result.ties += t * t * t - t;
    }
    return result;
}

void write_test(MannWhitney* record, const SortedCopy& x, const SortedCopy& y,
                AlternativeHypothesis alternative) {
    const double n1 = x.size();
    const double n2 = y.size();
    const double total = n1 + n2;
    const auto [greater, equal, ties] = compare(x, y);
    const double mean = (total + 1.0) * n1 / 2.0;
    record->statistic = n1 * (n1 + 1.0) / 2.0 + equal / 2.0 + greater;
    const double distance = hypothesis::corrected_distance(record->statistic, mean, alternative);
    const NormalReference normal;
    record->pValue = normal.p_value(distance / std::sqrt(n2 * mean / 6.0), alternative);
    const double tiedMean = mean - n1 * ties / (2.0 * total * (total - 1.0));
    record->pValueAdjusted =
        ties <= 0.0 ? -1.0 : normal.p_value(distance / std::sqrt(n2 * tiedMean / 6.0), alternative);
}

}  // namespace

int RunKroMannWhitney(MannWhitney* record, const double* x, const double* y, double confidence,
                      IntervalType type, AlternativeHypothesis alternative) {
    const QuietArithmetic quiet;
    hypothesis::clear_results(record, &MannWhitney::count1, &MannWhitney::count2);
    const SortedCopy sample1(x, record->count1);
    const SortedCopy sample2(y, record->count2);
    if (!sample1 || !sample2) {
        return conventions::kOutOfMemory;
    }
    if (is_constant(sample1) || is_constant(sample2)) {
        return conventions::kConstantSample;
    }
    if (!write_interval(record, sample1, sample2, confidence, type)) {
        return conventions::kOutOfMemory;
    }
    record->median1 = descriptive::median_position(record->count1).value_in(sample1);
    record->median2 = descriptive::median_position(record->count2).value_in(sample2);
    write_test(record, sample1, sample2, alternative);
    return conventions::kSuccess;
}

}  // namespace vela::v0
