// The special members of the records of the tests of means: what a caller gets before a test runs.

#include "conventions/quiet_nan.hpp"
#include "vela/v0/one_sample_t.hpp"
#include "vela/v0/one_sample_z.hpp"
#include "vela/v0/paired_t.hpp"
#include "vela/v0/two_sample_t.hpp"

namespace vela::v0 {

using conventions::kNaN;

// The upper half of the quiet NaN's bits: a fresh two-sample record has one NaN pattern stored over
// its two counts.
constexpr std::uint32_t kUpperHalfOfNaN = 0x7FF80000;

OneSampleZ::OneSampleZ()
    : mean(kNaN),
      stDev(kNaN),
      seMean(kNaN),
      lower(kNaN),
      upper(kNaN),
      statistic(kNaN),
      pValue(kNaN),
      count(0) {}
OneSampleZ::OneSampleZ(const OneSampleZ& other) = default;
OneSampleZ::OneSampleZ(OneSampleZ&& other) noexcept = default;
OneSampleZ& OneSampleZ::operator=(const OneSampleZ& other) = default;
OneSampleZ& OneSampleZ::operator=(OneSampleZ&& other) noexcept = default;

OneSampleT::OneSampleT()
    : mean(kNaN),
      stDev(kNaN),
      seMean(kNaN),
      lower(kNaN),
      upper(kNaN),
      statistic(kNaN),
      pValue(kNaN),
      count(0) {}
OneSampleT::OneSampleT(const OneSampleT& other) = default;
OneSampleT::OneSampleT(OneSampleT&& other) noexcept = default;
OneSampleT& OneSampleT::operator=(const OneSampleT& other) = default;
OneSampleT& OneSampleT::operator=(OneSampleT&& other) noexcept = default;

PairedT::PairedT()
    : mean1(kNaN),
      mean2(kNaN),
      stDev1(kNaN),
      stDev2(kNaN),
      seMean1(kNaN),
      seMean2(kNaN),
      meanDiff(kNaN),
      stDevDiff(kNaN),
      seMeanDiff(kNaN),
      lower(kNaN),
      upper(kNaN),
      statistic(kNaN),
      pValue(kNaN),
      count(0) {}
PairedT::PairedT(const PairedT& other) = default;
PairedT::PairedT(PairedT&& other) noexcept = default;
PairedT& PairedT::operator=(const PairedT& other) = default;
PairedT& PairedT::operator=(PairedT&& other) noexcept = default;

TwoSampleT::TwoSampleT()
    : mean1(kNaN),
      mean2(kNaN),
      stDev1(kNaN),
      stDev2(kNaN),
      seMean1(kNaN),
      seMean2(kNaN),
      difference(kNaN),
      pooledStDev(kNaN),
      df(kNaN),
      lower(kNaN),
      upper(kNaN),
      statistic(kNaN),
      pValue(kNaN),
      count1(0),
      count2(kUpperHalfOfNaN) {}
TwoSampleT::TwoSampleT(const TwoSampleT& other) = default;
TwoSampleT::TwoSampleT(TwoSampleT&& other) noexcept = default;
TwoSampleT& TwoSampleT::operator=(const TwoSampleT& other) = default;
TwoSampleT& TwoSampleT::operator=(TwoSampleT&& other) noexcept = default;

}  // namespace vela::v0
