#include "vela/v0/two_sample_t.hpp"

#include "hypothesis/parametric/means.hpp"

#include <cmath>

namespace vela::v0 {

using conventions::QuietArithmetic;
using hypothesis::Comparison;
using hypothesis::TReference;

namespace {

/// Standard error under a common variance; writes df and pooledStDev.
double pooled_standard_error(TwoSampleT* record) {
    const double m = record->count1;
    const double k = record->count2;
    const double df = m + k - 2.0;
    record->df = df;
    record->pooledStDev = std::sqrt(record->stDev2 * record->stDev2 * (k - 1.0) / df +
                                    record->stDev1 * record->stDev1 * (m - 1.0) / df);
    return std::sqrt(1.0 / k + 1.0 / m) * record->pooledStDev;
}

/// Standard error with a variance each; writes df, deliberately rounded down to a whole number.
double welch_standard_error(TwoSampleT* record) {
    const double m = record->count1;
    const double k = record->count2;
    const double a = record->seMean1 * record->seMean1;
    const double b = record->seMean2 * record->seMean2;
    record->df = std::floor((a + b) * (a + b) / (b * b / (k - 1.0) + a * a / (m - 1.0)));
    return std::sqrt(a + b);
}

Comparison<TReference> compare(TwoSampleT* record, bool pooled) {
    record->difference = record->mean1 - record->mean2;
    record->seMean1 = hypothesis::standard_error(record->stDev1, record->count1);
    record->seMean2 = hypothesis::standard_error(record->stDev2, record->count2);
    const double standardError =
        pooled ? pooled_standard_error(record) : welch_standard_error(record);
    return {record->difference, standardError, {record->df}};
}

void summarize_samples(TwoSampleT* record, const double* x1, const double* x2) {
    const auto [first, second] =
        descriptive::means_and_variances<2>({{{x1, record->count1}, {x2, record->count2}}});
    hypothesis::write_summary(first, &record->mean1, &record->stDev1);
    hypothesis::write_summary(second, &record->mean2, &record->stDev2);
}

}  // namespace

int RunTwoSampleT(TwoSampleT* record, bool pooled, double confidence, IntervalType type) {
    const QuietArithmetic quiet;
    return compare(record, pooled).write_interval(record, confidence, type);
}

int RunTwoSampleT(TwoSampleT* record, bool pooled, double confidence, IntervalType type,
                  AlternativeHypothesis alternative, double hypothesizedValue) {
    const QuietArithmetic quiet;
    return compare(record, pooled)
        .write_interval_and_test(record, confidence, type, alternative, hypothesizedValue);
}

int RunTwoSampleT(TwoSampleT* record, const double* x1, const double* x2, bool pooled,
                  double confidence, IntervalType type) {
    const QuietArithmetic quiet;
    summarize_samples(record, x1, x2);
    return RunTwoSampleT(record, pooled, confidence, type);
}

int RunTwoSampleT(TwoSampleT* record, const double* x1, const double* x2, bool pooled,
                  double confidence, IntervalType type, AlternativeHypothesis alternative,
                  double hypothesizedValue) {
    const QuietArithmetic quiet;
    summarize_samples(record, x1, x2);
    return RunTwoSampleT(record, pooled, confidence, type, alternative, hypothesizedValue);
}

}  // namespace vela::v0
