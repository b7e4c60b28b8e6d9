#include "vela/v1/summaries.hpp"

#include "conventions/fp_environment.hpp"
#include "conventions/quiet_nan.hpp"
#include "conventions/status.hpp"
#include "descriptive/median_interval.hpp"
#include "descriptive/modes.hpp"
#include "descriptive/ordering.hpp"
#include "descriptive/quantiles.hpp"

#include <cmath>

namespace vela::v1 {

using conventions::kNaN;
using descriptive::QuantilePosition;

FiveNumberSummary::FiveNumberSummary()
    : minimum(kNaN), firstQuartile(kNaN), median(kNaN), thirdQuartile(kNaN), maximum(kNaN) {}
FiveNumberSummary::FiveNumberSummary(const FiveNumberSummary& other) = default;
FiveNumberSummary::FiveNumberSummary(FiveNumberSummary&& other) noexcept = default;
FiveNumberSummary& FiveNumberSummary::operator=(const FiveNumberSummary& other) = default;
FiveNumberSummary& FiveNumberSummary::operator=(FiveNumberSummary&& other) noexcept = default;

KroBoxplotHelper::KroBoxplotHelper()
    : minimum(kNaN),
      maximum(kNaN),
      firstQuartile(kNaN),
      thirdQuartile(kNaN),
      median(kNaN),
      medianLower(kNaN),
      medianUpper(kNaN),
      lowerHinge(kNaN),
      upperHinge(kNaN),
      mean(kNaN),
      standardDeviation(kNaN) {}
KroBoxplotHelper::KroBoxplotHelper(const KroBoxplotHelper& other) = default;
KroBoxplotHelper::KroBoxplotHelper(KroBoxplotHelper&& other) noexcept = default;
KroBoxplotHelper& KroBoxplotHelper::operator=(const KroBoxplotHelper& other) = default;
KroBoxplotHelper& KroBoxplotHelper::operator=(KroBoxplotHelper&& other) noexcept = default;

namespace {

constexpr unsigned int kMostModes = 5;

template <class Sample>
void write_five_numbers(FiveNumberSummary* r, const Sample& sample,
                        const std::array<QuantilePosition, 5>& positions) {
    r->minimum = positions[0].value_in(sample);
    r->firstQuartile = positions[1].value_in(sample);
    r->median = positions[2].value_in(sample);
    r->thirdQuartile = positions[3].value_in(sample);
    r->maximum = positions[4].value_in(sample);
}

/// Where everything in a boxplot lies, before the data is looked at.
struct BoxplotPositions {
    std::array<QuantilePosition, 5> five;
    QuantilePosition lowerHinge;
    QuantilePosition upperHinge;
    descriptive::MedianInterval medianInterval;

    BoxplotPositions(std::uint32_t n, double confidence)
        : five(descriptive::five_number_positions(n)),
          medianInterval(descriptive::make_median_interval(n, confidence,
                                                           descriptive::kro_sign_distribution(n))) {
        const double h = (n + 3.0) / (4.0 * (n + 1.0));
        lowerHinge = descriptive::quantile_position(n, descriptive::kSummaryMethod, h);
        upperHinge = descriptive::quantile_position(n, descriptive::kSummaryMethod, 1.0 - h);
    }

    template <class Want>
    void for_each_rank(Want want) const {
        for (const QuantilePosition& position : five) {
            position.for_each_rank(want);
        }
        lowerHinge.for_each_rank(want);
        upperHinge.for_each_rank(want);
        descriptive::for_each_limit_rank(medianInterval, want);
    }
};

template <class Sample>
void write_boxplot(KroBoxplotHelper* r, const Sample& sample, const BoxplotPositions& positions) {
    r->minimum = positions.five[0].value_in(sample);
    r->firstQuartile = positions.five[1].value_in(sample);
    r->median = positions.five[2].value_in(sample);
    r->thirdQuartile = positions.five[3].value_in(sample);
    r->maximum = positions.five[4].value_in(sample);
    r->lowerHinge = positions.lowerHinge.value_in(sample);
    r->upperHinge = positions.upperHinge.value_in(sample);
    const descriptive::MedianLimits limits =
        descriptive::median_limits(positions.medianInterval, sample);
    r->medianLower = limits.interpolatedLower;
    r->medianUpper = limits.interpolatedUpper;
}

}  // namespace

int GetKroFiveNumberSummary(FiveNumberSummary* r, const double* x, unsigned int n) {
    const auto positions = descriptive::five_number_positions(n);
    const bool isDone = descriptive::with_order_statistics(
        x, n,
        [&](auto want) {
            for (const QuantilePosition& position : positions) {
                position.for_each_rank(want);
            }
        },
        [&](const auto& sample) { write_five_numbers(r, sample, positions); });
    return isDone ? conventions::kSuccess : conventions::kOutOfMemory;
}

int GetKro2013ExtendedSummary(SecondSampleMoments* moments, FiveNumberSummary* five, double* modes,
                              unsigned int* numModes, unsigned int* modeFrequency,
                              const double* x) {
    const unsigned int n = moments->count;
    const descriptive::SortedCopy sorted(x, n);  // before anything is written: x may be there
    GetSecondSampleMoments(moments, x);
    if (!sorted) {
        return conventions::kOutOfMemory;
    }
    write_five_numbers(five, sorted, descriptive::five_number_positions(n));
    const descriptive::ModeCounts counts =
        descriptive::write_modes({sorted.values(), n}, {modes, kMostModes});
    *numModes = counts.modes;
    *modeFrequency = counts.frequency;
    return conventions::kSuccess;
}

int RunKroBoxplotHelper(KroBoxplotHelper* r, double confidence, const double* x, unsigned int n) {
    const conventions::QuietArithmetic quiet;
    const BoxplotPositions positions(n, confidence);
    double mean = 0.0;
    double variance = 0.0;
    GetSampleMeanAndVariance(x, n, &mean, &variance);
    const bool isDone = descriptive::with_order_statistics(
        x, n, [&](auto want) { positions.for_each_rank(want); },
        [&](const auto& sample) { write_boxplot(r, sample, positions); });
    if (!isDone) {
        *r = KroBoxplotHelper();
        return conventions::kOutOfMemory;
    }
    r->mean = mean;
    r->standardDeviation = std::sqrt(variance);
    return conventions::kSuccess;
}

}  // namespace vela::v1
