#include "vela/v0/paired_t.hpp"

#include "hypothesis/parametric/means.hpp"

#include <memory>
#include <new>

namespace vela::v0 {

using conventions::QuietArithmetic;
using hypothesis::Comparison;
using hypothesis::TReference;

namespace {

Comparison<TReference> compare(PairedT* record) {
    record->seMeanDiff = hypothesis::standard_error(record->stDevDiff, record->count);
    return {record->meanDiff, record->seMeanDiff, {static_cast<double>(record->count) - 1.0}};
}

/// Every summary field from the data.
int summarize_pairs(PairedT* record, const double* x, const double* y) {
    const std::uint32_t count = record->count;
    hypothesis::summarize(x, count, &record->mean1, &record->stDev1);
    hypothesis::summarize(y, count, &record->mean2, &record->stDev2);
    record->seMean1 = hypothesis::standard_error(record->stDev1, count);
    record->seMean2 = hypothesis::standard_error(record->stDev2, count);
    const std::unique_ptr<double[]> differences(new (std::nothrow) double[count]);
    if (!differences) {
        return conventions::kOutOfMemory;
    }
    for (std::uint32_t i = 0; i < count; ++i) {
        differences[i] = x[i] - y[i];
    }
    hypothesis::summarize(differences.get(), count, &record->meanDiff, &record->stDevDiff);
    return conventions::kSuccess;
}

}  // namespace

int RunPairedT(PairedT* record, double confidence, IntervalType type) {
    const QuietArithmetic quiet;
    return compare(record).write_interval(record, confidence, type);
}

int RunPairedT(PairedT* record, double confidence, IntervalType type,
               AlternativeHypothesis alternative, double hypothesizedValue) {
    const QuietArithmetic quiet;
    return compare(record).write_interval_and_test(record, confidence, type, alternative,
                                                   hypothesizedValue);
}

int RunPairedT(PairedT* record, const double* x, const double* y, double confidence,
               IntervalType type) {
    const QuietArithmetic quiet;
    const int status = summarize_pairs(record, x, y);
    return status != conventions::kSuccess ? status : RunPairedT(record, confidence, type);
}

int RunPairedT(PairedT* record, const double* x, const double* y, double confidence,
               IntervalType type, AlternativeHypothesis alternative, double hypothesizedValue) {
    const QuietArithmetic quiet;
    const int status = summarize_pairs(record, x, y);
    return status != conventions::kSuccess
               ? status
               : RunPairedT(record, confidence, type, alternative, hypothesizedValue);
}

}  // namespace vela::v0
