// The special members of the records of the tests by ranks and signs: what a caller gets before a
// test runs.

#include "conventions/quiet_nan.hpp"
#include "vela/v0/mann_whitney.hpp"
#include "vela/v0/one_sample_sign.hpp"
#include "vela/v0/one_sample_wilcoxon.hpp"
#include "vela/v1/runs_test.hpp"

namespace vela {

using conventions::kNaN;

namespace v0 {

OneSampleSign::OneSampleSign()
    : median(kNaN),
      innerConfidence(kNaN),
      outerConfidence(kNaN),
      innerLower(kNaN),
      interpolatedLower(kNaN),
      outerLower(kNaN),
      innerUpper(kNaN),
      interpolatedUpper(kNaN),
      outerUpper(kNaN),
      innerPosition(kNaN),
      outerPosition(kNaN),
      pValue(kNaN),
      below(kNaN),
      equal(kNaN),
      above(kNaN),
      count(0) {}
OneSampleSign::OneSampleSign(const OneSampleSign& other) = default;
OneSampleSign::OneSampleSign(OneSampleSign&& other) noexcept = default;
OneSampleSign& OneSampleSign::operator=(const OneSampleSign& other) = default;
OneSampleSign& OneSampleSign::operator=(OneSampleSign&& other) noexcept = default;

OneSampleWilcoxon::OneSampleWilcoxon()
    : estimate(kNaN),
      achievedConfidence(kNaN),
      lower(kNaN),
      upper(kNaN),
      statistic(kNaN),
      pValue(kNaN),
      count(0) {}
OneSampleWilcoxon::OneSampleWilcoxon(const OneSampleWilcoxon& other) = default;
OneSampleWilcoxon::OneSampleWilcoxon(OneSampleWilcoxon&& other) noexcept = default;
OneSampleWilcoxon& OneSampleWilcoxon::operator=(const OneSampleWilcoxon& other) = default;
OneSampleWilcoxon& OneSampleWilcoxon::operator=(OneSampleWilcoxon&& other) noexcept = default;

MannWhitney::MannWhitney()
    : median1(kNaN),
      median2(kNaN),
      estimate(kNaN),
      lower(kNaN),
      upper(kNaN),
      achievedConfidence(kNaN),
      statistic(kNaN),
      pValue(kNaN),
      pValueAdjusted(kNaN),
      count1(0),
      count2(0) {}
MannWhitney::MannWhitney(const MannWhitney& other) = default;
MannWhitney::MannWhitney(MannWhitney&& other) noexcept = default;
MannWhitney& MannWhitney::operator=(const MannWhitney& other) = default;
MannWhitney& MannWhitney::operator=(MannWhitney&& other) noexcept = default;

}  // namespace v0

namespace v1 {

RunsTest::RunsTest() : below(0), above(0), runs(0), expected(kNaN), pValue(kNaN) {}
RunsTest::RunsTest(const RunsTest& other) = default;
RunsTest::RunsTest(RunsTest&& other) noexcept = default;
RunsTest& RunsTest::operator=(const RunsTest& other) = default;
RunsTest& RunsTest::operator=(RunsTest&& other) noexcept = default;

}  // namespace v1

}  // namespace vela
