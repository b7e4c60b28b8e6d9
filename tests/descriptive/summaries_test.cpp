#include "support/reference_cases.hpp"
#include "support/special_values.hpp"
#include "support/threads.hpp"
#include "vela/vela.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

namespace vela::test {
namespace {

using v1::FiveNumberSummary;
using v1::KroBoxplotHelper;
using v1::SecondSampleMoments;

const std::string kFiveNumbers = "minimum firstQuartile median thirdQuartile maximum";

/// A record whose doubles, which it begins with, hold what an earlier call has left.
template <class Record, int doubles>
Record used_record() {
    Record record;
    std::fill_n(reinterpret_cast<double*>(&record), doubles, 7.0);
    return record;
}

const Runners kFunctions = {
    {"GetKroFiveNumberSummary",
     [](auto& c, auto& r) {
         auto five = used_record<FiveNumberSummary, 5>();
         r.value("status") = v1::GetKroFiveNumberSummary(&five, c.x(), c.n());
         r.add_fields(&five, kFiveNumbers);
     }},
    {"GetKro2013ExtendedSummary",
     [](auto& c, auto& r) {
         auto moments = used_record<SecondSampleMoments, 4>();
         moments.count = c.n();
         auto five = used_record<FiveNumberSummary, 5>();
         Values& modes = r["modes"] = Values(5);
         unsigned int number = 99;
         unsigned int frequency = 99;
         r.value("status") = v1::GetKro2013ExtendedSummary(&moments, &five, modes.data(), &number,
                                                           &frequency, c.x());
         r.value("numModes") = number;
         r.value("modeFrequency") = frequency;
         r.add_fields(&moments, "variance sumOfSquares mean sum");
         r.add_fields(&five, kFiveNumbers);
     }},
    {"RunKroBoxplotHelper",
     [](auto& c, auto& r) {
         auto box = used_record<KroBoxplotHelper, 11>();
         under_armed_host([&] {
             r.value("status") = v1::RunKroBoxplotHelper(&box, c.get("confidence"), c.x(), c.n());
         });
         r.add_fields(&box,
                      "minimum maximum firstQuartile thirdQuartile median medianLower medianUpper "
                      "lowerHinge upperHinge mean standardDeviation");
     }},
};

TEST(Summaries, MatchReferenceValues) { check_reference_cases("order.csv", kFunctions); }

KroBoxplotHelper boxplot_of(const Values& x, double confidence) {
    KroBoxplotHelper box;
    EXPECT_EQ(v1::RunKroBoxplotHelper(&box, confidence, x.data(), size(x)), 0);
    return box;
}

Values counting_up(int n) {
    Values x(static_cast<std::size_t>(n));
    std::iota(x.begin(), x.end(), 1.0);
    return x;
}

/// P(B = 0) is 1/32 for five observations, so that 0.9375 is what their range covers: it counts as
/// reached, and a little less is the interval itself.
TEST(MedianInterval, CountsAnExactTailAsReached) {
    const Values x = counting_up(5);
    EXPECT_TRUE(IsNaN(boxplot_of(x, 0.9375).medianLower));
    const KroBoxplotHelper box = boxplot_of(x, 0.9374999);
    EXPECT_NEAR(box.medianLower, 1.0, 1e-5);  // the slope there is below 10
    EXPECT_NEAR(box.medianUpper, 5.0, 1e-5);
}

/// The interval is symmetric in the sample, shrinks with the confidence, and passes continuously
/// from one pair of order statistics to the next, also where the method changes at 51.
TEST(MedianInterval, IsSymmetricMonotoneAndContinuous) {
    // For n = 400 at 0.985 the ends move by 0.245 per step; a wrong neighbour is a jump by 1.
    constexpr double kMostPerStep = 0.3;
    for (const int n : {4, 5, 20, 50, 51, 52, 400}) {
        const Values x = counting_up(n);
        double last = -kInfinity;
        for (int i = 985; i > 0; --i) {
            const KroBoxplotHelper box = boxplot_of(x, i * 0.001);
            if (IsNaN(box.medianLower)) {
                continue;
            }
            EXPECT_NEAR(box.medianLower + box.medianUpper, n + 1.0, 1e-12 * n) << n << " " << i;
            EXPECT_GE(box.medianLower, last) << n << " " << i;
            EXPECT_LE(box.medianLower - last, last < 0.0 ? kInfinity : kMostPerStep)
                << n << " " << i;
            last = box.medianLower;
        }
        EXPECT_NEAR(last, (n + 1.0) / 2.0, 0.1) << "confidence near 0 leaves the median, n = " << n;
    }
}

/// The data may lie where a result goes: here the moments, of which the sample is all four doubles.
TEST(Summaries, ReadTheDataBeforeTheyWrite) {
    auto moments = used_record<SecondSampleMoments, 4>();
    moments.variance = 4.0;
    moments.mean = 3.0;
    moments.count = 4;
    FiveNumberSummary five;
    double modes[5];
    unsigned int number = 0;
    unsigned int frequency = 0;
    EXPECT_EQ(v1::GetKro2013ExtendedSummary(&moments, &five, modes, &number, &frequency,
                                            &moments.variance),
              0);
    EXPECT_EQ(moments.mean, 5.25);
    EXPECT_TRUE(five.median == 5.5 && five.maximum == 7.0 && modes[0] == 7.0 && frequency == 2);
}

}  // namespace
}  // namespace vela::test
