#include "vela/v0/paired_t.hpp"

#include "hypothesis/parametric/means.hpp"

#include <memory>
#include <new>

namespace vela::v0 {

using conventions::QuietArithmetic;
using descriptive::MeanAndVariance;
using descriptive::means_and_variances;
using hypothesis::Comparison;
using hypothesis::TReference;

namespace {

Comparison<TReference> compare(PairedT* record) {
    record->seMeanDiff = hypothesis::standard_error(record->stDevDiff, record->count);
    return {record->meanDiff, record->seMeanDiff, {static_cast<double>(record->count) - 1.0}};
}

void write_samples(PairedT* record, const MeanAndVariance& first, const MeanAndVariance& second) {
    hypothesis::write_summary(first, &record->mean1, &record->stDev1);
    hypothesis::write_summary(second, &record->mean2, &record->stDev2);
    record->seMean1 = hypothesis::standard_error(record->stDev1, record->count);
    record->seMean2 = hypothesis::standard_error(record->stDev2, record->count);
}

/// Every summary field from the data; those of the two samples also without memory for the
/// differences.
int summarize_pairs(PairedT* record, const double* x, const double* y) {
    const std::uint32_t count = record->count;
    const std::unique_ptr<double[]> differences(new (std::nothrow) double[count]);
    if (!differences) {
        const auto [first, second] = means_and_variances<2>({{{x, count}, {y, count}}});
        write_samples(record, first, second);
        return conventions::kOutOfMemory;
    }
    for (std::uint32_t i = 0; i < count; ++i) {
        differences[i] = x[i] - y[i];
    }
    const auto [first, second, difference] =
        means_and_variances<3>({{{x, count}, {y, count}, {differences.get(), count}}});
    write_samples(record, first, second);
    hypothesis::write_summary(difference, &record->meanDiff, &record->stDevDiff);
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
