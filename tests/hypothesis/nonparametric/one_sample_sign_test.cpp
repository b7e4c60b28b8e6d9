#include "support/equality.hpp"
#include "support/floating_point_state.hpp"
#include "support/threads.hpp"
#include "vela/vela.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

namespace vela::test {
namespace {

using v0::OneSampleSign;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

OneSampleSign stale_record(std::uint32_t count) {
    OneSampleSign record;
    for (double* field = &record.median; field <= &record.above; ++field) {
        *field = 7.0;
    }
    record.count = count;
    return record;
}

TEST(OneSampleSign, AnswersWhatHasNoIntervalByStatusOrNaN) {
    const double x[] = {1.0, 2.0, 3.0, 4.0, 5.0};
    const struct {
        std::uint32_t count;
        double confidence;
        int type;
        int status;
        double pValue;
        double outerConfidence;
        double innerUpper;
    } cases[] = {
        {0, 0.95, 0, 10001, 1.0, kNaN, kNaN},
        {0, kNaN, 1, 10001, 1.0, kNaN, kNaN},
        {5, 0.95, 7, 30002, kNaN, kNaN, kNaN},
        {0, 0.95, -2, 30002, kNaN, kNaN, kNaN},
        {5, kNaN, 0, 0, 0.625, kNaN, kNaN},
        {5, 1.5, -1, 0, 0.625, kNaN, kNaN},
        {5, -1.5, 0, 0, 0.625, kNaN, kNaN},
        {5, 0.9375, 0, 10001, 0.625, kNaN, 5.0},  // a tail of 1/32, reached by d = 0
        {5, 0.9375, 1, 0, 0.625, 0.96875, kInfinity},
        {5, 0.25, 1, 10002, 0.625, 0.5, kNaN},  // two-sided confidence -0.5
    };
    for (const auto& c : cases) {
        OneSampleSign sign = stale_record(c.count);
        const auto type = static_cast<IntervalType>(c.type);
        SCOPED_TRACE(testing::Message() << c.count << " " << c.confidence << " " << c.type);
        EXPECT_EQ(RunOneSampleSign(&sign, c.count == 0 ? nullptr : x, c.confidence, type,
                                   AlternativeHypothesis::NotEqual, 2.0),
                  c.status);
        EXPECT_EQ(IsNaN(sign.median), c.count == 0 || c.status == 30002);
        EXPECT_EQ(IsNaN(sign.below), c.status == 30002);
        for (const auto& [got, expected] : {std::pair(sign.pValue, c.pValue),
                                            {sign.outerConfidence, c.outerConfidence},
                                            {sign.innerUpper, c.innerUpper}}) {
            EXPECT_TRUE(within_relative(got, expected, 1e-15)) << got << " " << expected;
        }
    }
}

TEST(OneSampleSign, NormalDepthStaysInTheSampleAndItsMiddleIsExact) {
    const std::vector<double> x(51, 3.0);
    OneSampleSign sign = stale_record(51);
    EXPECT_EQ(RunKroOneSampleSign(&sign, x.data(), 1.0 - 1e-14, IntervalType::TwoSided), 10001)
        << "the depth is -1 before it is cut";
    EXPECT_EQ(sign.innerLower, 3.0);
    EXPECT_EQ(RunKroOneSampleSign(&sign, x.data(), 0.5, IntervalType::LowerBound,
                                  AlternativeHypothesis::NotEqual, 3.0),
              10002);
    EXPECT_EQ(sign.outerConfidence, 0.5);
    EXPECT_EQ(sign.pValue, 1.0);
    EXPECT_EQ(sign.equal, 51.0);
}

TEST(OneSampleSign, TakesAnyDataInWhateverStateTheHostLeft) {
    on_thread(Registration::kRegistered, [] {
        SetKroFpuStates();
        const bool wereArmed = traps_are_armed();
        const double x[] = {kNaN, kInfinity, -kInfinity, 1e308, -1e308, kNaN, 2.0, 3.0};
        OneSampleSign sign = stale_record(8);
        EXPECT_EQ(RunKroOneSampleSign(&sign, x, 0.9, IntervalType::TwoSided,
                                      AlternativeHypothesis::GreaterThan, 2.0),
                  0);
        EXPECT_EQ(sign.below, 2.0);
        EXPECT_EQ(sign.equal, 3.0) << "2 and NaN";
        EXPECT_EQ(sign.above, 3.0);
        EXPECT_EQ(sign.pValue, 0.5);
        EXPECT_EQ(sign.outerLower, -1e308) << "the second of eight";
        EXPECT_EQ(sign.innerUpper, kInfinity) << "the sixth; NaN stand last";
        EXPECT_EQ(traps_are_armed(), wereArmed) << "the host has its own state back";
        ResetFpuStates();
    });
}

}  // namespace
}  // namespace vela::test
