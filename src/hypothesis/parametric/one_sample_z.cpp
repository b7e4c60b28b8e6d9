#include "vela/v0/one_sample_z.hpp"

#include "hypothesis/parametric/means.hpp"

namespace vela::v0 {

using conventions::QuietArithmetic;
using hypothesis::Comparison;
using hypothesis::NormalReference;

namespace {

Comparison<NormalReference> compare(OneSampleZ* record, double sigma) {
    record->seMean = hypothesis::standard_error(sigma, record->count);
    return {record->mean, record->seMean, {}};
}

}  // namespace

int RunOneSampleZ(OneSampleZ* record, double sigma, double confidence, IntervalType type) {
    const QuietArithmetic quiet;
    return compare(record, sigma).write_interval(record, confidence, type);
}

int RunOneSampleZ(OneSampleZ* record, double sigma, double confidence, IntervalType type,
                  AlternativeHypothesis alternative, double hypothesizedValue) {
    const QuietArithmetic quiet;
    return compare(record, sigma)
        .write_interval_and_test(record, confidence, type, alternative, hypothesizedValue);
}

int RunOneSampleZ(OneSampleZ* record, const double* x, double sigma, double confidence,
                  IntervalType type) {
    const QuietArithmetic quiet;
    hypothesis::summarize(x, record->count, &record->mean, &record->stDev);
    return RunOneSampleZ(record, sigma, confidence, type);
}

int RunOneSampleZ(OneSampleZ* record, const double* x, double sigma, double confidence,
                  IntervalType type, AlternativeHypothesis alternative, double hypothesizedValue) {
    const QuietArithmetic quiet;
    hypothesis::summarize(x, record->count, &record->mean, &record->stDev);
    return RunOneSampleZ(record, sigma, confidence, type, alternative, hypothesizedValue);
}

}  // namespace vela::v0
