#include "vela/v0/one_sample_t.hpp"

#include "hypothesis/parametric/means.hpp"

namespace vela::v0 {

using conventions::QuietArithmetic;
using hypothesis::Comparison;
using hypothesis::TReference;

namespace {

Comparison<TReference> compare(OneSampleT* record) {
    record->seMean = hypothesis::standard_error(record->stDev, record->count);
    return {record->mean, record->seMean, {static_cast<double>(record->count) - 1.0}};
}

}  // namespace

int RunOneSampleT(OneSampleT* record, double confidence, IntervalType type) {
    const QuietArithmetic quiet;
    return compare(record).write_interval(record, confidence, type);
}

int RunOneSampleT(OneSampleT* record, double confidence, IntervalType type,
                  AlternativeHypothesis alternative, double hypothesizedValue) {
    const QuietArithmetic quiet;
    return compare(record).write_interval_and_test(record, confidence, type, alternative,
                                                   hypothesizedValue);
}

int RunOneSampleT(OneSampleT* record, const double* x, double confidence, IntervalType type) {
    const QuietArithmetic quiet;
    hypothesis::summarize(x, record->count, &record->mean, &record->stDev);
    return RunOneSampleT(record, confidence, type);
}

int RunOneSampleT(OneSampleT* record, const double* x, double confidence, IntervalType type,
                  AlternativeHypothesis alternative, double hypothesizedValue) {
    const QuietArithmetic quiet;
    hypothesis::summarize(x, record->count, &record->mean, &record->stDev);
    return RunOneSampleT(record, confidence, type, alternative, hypothesizedValue);
}

}  // namespace vela::v0
