// The intervals that are order statistics of pairs, against all pairs.

#include "support/equality.hpp"
#include "support/reference_cases.hpp"
#include "vela/vela.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numeric>
#include <random>

namespace vela::test {
namespace {

using v0::MannWhitney;
using v0::OneSampleWilcoxon;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kDenormal = std::numeric_limits<double>::denorm_min();

struct Kind {
    const char* name;
    std::function<double(std::mt19937_64&)> draw;
};

double uniform(std::mt19937_64& bits) { return static_cast<double>(bits() >> 11U) * 0x1p-53; }

const Kind kKinds[] = {
    {"even", uniform},
    {"symmetric grid", [](auto& bits) { return static_cast<double>(bits() % 1000) - 500.0; }},
    {"three values", [](auto& bits) { return static_cast<double>(bits() % 3); }},
    {"two decimals", [](auto& bits) { return std::round(100.0 * uniform(bits)) / 100.0; }},
    {"skewed", [](auto& bits) { return std::exp(20.0 * uniform(bits)); }},
    {"all magnitudes",
     [](auto& bits) {
         return std::pow(10.0, 600.0 * uniform(bits) - 300.0) * (bits() % 2 ? 1 : -1);
     }},
    {"constant and outliers",
     [](auto& bits) { return bits() % 8 != 0 ? 3.0 : 1e200 * (uniform(bits) - 0.5); }},
    {"ends of the range",
     [](auto& bits) {
         const double ends[] = {kLargest, -kLargest, 1e308, kDenormal, 3 * kDenormal, 1.0};
         return ends[bits() % std::size(ends)];
     }},
};

Values make_sample(const Kind& kind, std::size_t n, std::mt19937_64& bits) {
    Values x(n);
    std::generate(x.begin(), x.end(), [&] { return kind.draw(bits); });
    return x;
}

/// k for the normal approximation of the number of pairs on one side.
double omitted(std::size_t pairs, double deviation, double confidence, IntervalType type) {
    const double tail = (1.0 - confidence) / (type == IntervalType::TwoSided ? 2.0 : 1.0);
    return NormalInvCdf(tail, 0.0, 1.0) * deviation + static_cast<double>(pairs) / 2.0;
}

/// The estimate and the limits against all pairs, `k` of which are beyond each limit; a limit that
/// the type leaves open is `open` times infinity.
template <class Record>
void check_against_pairs(const Record& record, Values pairs, double k, IntervalType type,
                         double open) {
    std::sort(pairs.begin(), pairs.end());
    const std::size_t size = pairs.size();
    const auto rank = static_cast<std::size_t>(k);
    const bool isThere = k < static_cast<double>(size);
    const double lower = isThere ? pairs[rank] : kNaN;
    const double upper = isThere ? pairs[size - 1 - rank] : kNaN;
    const auto equal = [](double a, double b) { return a == b || (IsNaN(a) && IsNaN(b)); };
    EXPECT_PRED2(equal, record.estimate, std::midpoint(pairs[(size - 1) / 2], pairs[size / 2]));
    EXPECT_PRED2(equal, record.lower, type == IntervalType::UpperBound ? -open : lower);
    EXPECT_PRED2(equal, record.upper, type == IntervalType::LowerBound ? open : upper);
}

void check_wilcoxon(const Values& x, double confidence, IntervalType type, double median) {
    const double n = size(x);
    const double tolerance = std::max(
        1e-12, 0x1p-49 * std::fabs(*std::max_element(x.begin(), x.end(), [](auto a, auto b) {
                   return std::fabs(a) < std::fabs(b);
               })));
    Values averages;
    double statistic = 0.0;
    double zeros = 0.0;
    double above = 0.0;
    for (std::size_t i = 0; i < x.size(); ++i) {
        zeros += median - tolerance < x[i] && x[i] < median + tolerance ? 1.0 : 0.0;
        above += x[i] > median + tolerance ? 1.0 : 0.0;
        for (std::size_t j = i; j < x.size(); ++j) {
            averages.push_back(std::midpoint(x[i], x[j]));
            const double half = 0.5 * x[i] + 0.5 * x[j];  // does not overflow
            statistic += half > median + tolerance / 2.0    ? 1.0
                         : half >= median - tolerance / 2.0 ? 0.5
                                                            : 0.0;
        }
    }
    const double mean = n * (n + 1.0) / 4.0;
    const double deviation = std::sqrt(n * (n + 1.0) * (2.0 * n + 1.0) / 24.0);
    const double k =
        std::floor(std::max(omitted(averages.size(), deviation, confidence, type), 0.0));
    OneSampleWilcoxon record;
    record.count = size(x);
    EXPECT_EQ(RunKroOneSampleWilcoxon(&record, x.data(), confidence, type,
                                      AlternativeHypothesis::NotEqual, median),
              0);
    check_against_pairs(record, averages, mean < k + 1.0 ? k - 1.0 : k, type, kInfinity);
    EXPECT_EQ(record.count, n - zeros);
    if (record.count > 0) {
        EXPECT_EQ(record.statistic, statistic - zeros * (above + (zeros + 1.0) / 4.0));
    }
}

void check_mann_whitney(const Values& x, const Values& y, double confidence, IntervalType type) {
    Values differences;
    double statistic = size(x) * (size(x) + 1.0) / 2.0;
    for (const double a : x) {
        for (const double b : y) {
            differences.push_back(a - b);
            statistic += a > b ? 1.0 : a == b ? 0.5 : 0.0;
        }
    }
    const double pairs = static_cast<double>(differences.size());
    const double deviation = std::sqrt((size(x) + size(y) + 1.0) * pairs / 12.0);
    const double k =
        std::floor(std::max(omitted(differences.size(), deviation, confidence, type) - 0.5, 0.0));
    MannWhitney record;
    record.count1 = size(x);
    record.count2 = size(y);
    const int status = RunKroMannWhitney(&record, x.data(), y.data(), confidence, type,
                                         AlternativeHypothesis::NotEqual);
    const auto is_constant = [](const Values& v) {
        return std::count(v.begin(), v.end(), v[0]) == std::ssize(v);
    };
    ASSERT_EQ(status, is_constant(x) || is_constant(y) ? 30023 : 0);
    if (status == 0) {
        check_against_pairs(record, differences, k, type, kNaN);
        EXPECT_EQ(record.statistic, statistic);
    }
}

TEST(RankIntervals, AreOrderStatisticsOfAllPairs) {
    std::mt19937_64 bits(6);
    const double confidences[] = {0.95, 0.5, 0.999, 1.0 - 1e-16, 0.02};
    std::size_t turn = 0;
    for (const Kind& kind : kKinds) {
        for (const std::size_t n : {2U, 3U, 4U, 7U, 16U, 22U, 23U, 40U, 41U, 150U, 320U}) {
            SCOPED_TRACE(testing::Message() << kind.name << ", " << n);
            const auto type = static_cast<IntervalType>(static_cast<int>(turn % 3) - 1);
            const double confidence = confidences[turn % std::size(confidences)];
            const Values x = make_sample(kind, n, bits);
            check_wilcoxon(x, confidence, type, x[turn % n]);
            check_mann_whitney(x, make_sample(kind, 3 + turn % 200, bits), confidence, type);
            ++turn;
        }
    }
}

/// Whether `value` is the sum number `rank` of all x + y, or of all pairs of x when y is empty.
bool has_rank(double value, double rank, const Values& x, const Values& y) {
    double below = 0.0;
    double upTo = 0.0;
    const Values& other = y.empty() ? x : y;
    auto lessThan = other.end();
    auto atMost = other.end();
    for (std::size_t i = 0; i < x.size(); ++i) {
        while (lessThan != other.begin() && x[i] + lessThan[-1] >= value) {
            --lessThan;
        }
        while (atMost != other.begin() && x[i] + atMost[-1] > value) {
            --atMost;
        }
        const auto first = other.begin() + (y.empty() ? static_cast<std::ptrdiff_t>(i) : 0);
        below += static_cast<double>(std::max<std::ptrdiff_t>(lessThan - first, 0));
        upTo += static_cast<double>(std::max<std::ptrdiff_t>(atMost - first, 0));
    }
    return below < rank && rank <= upTo;
}

TEST(RankIntervals, HoldForLargeSamples) {
    std::mt19937_64 bits(7);
    for (const Kind& kind : kKinds) {
        SCOPED_TRACE(kind.name);
        Values x = make_sample(kind, 30'000, bits);
        Values y = make_sample(kind, 40'001, bits);
        const double n = size(x);
        const double m = size(y);
        OneSampleWilcoxon one;
        one.count = size(x);
        RunKroOneSampleWilcoxon(&one, x.data(), 0.9, IntervalType::TwoSided);
        MannWhitney two;
        two.count1 = size(x);
        two.count2 = size(y);
        RunKroMannWhitney(&two, x.data(), y.data(), 0.9, IntervalType::TwoSided,
                          AlternativeHypothesis::NotEqual);
        std::transform(y.begin(), y.end(), y.begin(), std::negate<>());
        std::sort(x.begin(), x.end());
        std::sort(y.begin(), y.end());
        const double z = NormalInvCdf(0.05, 0.0, 1.0);
        const double averages = n * (n + 1.0) / 2.0;
        const double k1 =
            std::floor(averages / 2.0 + z * std::sqrt(averages * (2.0 * n + 1.0) / 12.0));
        if (std::isfinite(2.0 * one.lower) && std::isfinite(2.0 * one.upper)) {
            EXPECT_TRUE(has_rank(2.0 * one.lower, k1 + 1.0, x, {}));
            EXPECT_TRUE(has_rank(2.0 * one.upper, averages - k1, x, {}));
        }
        const double k2 =
            std::floor(n * m / 2.0 - 0.5 + z * std::sqrt(n * m * (n + m + 1.0) / 12.0));
        EXPECT_TRUE(has_rank(two.lower, k2 + 1.0, x, y));
        EXPECT_TRUE(has_rank(two.upper, n * m - k2, x, y));
    }
}

TEST(RankIntervals, AnswerHostileInput) {
    const Values good = {3.0, -1.0, 4.0, 1.0, 5.0, 9.0};
    const struct {
        const char* name;
        Values x;
        double confidence;
        int type;
        bool hasEstimate;
        bool hasConfidence;
        bool hasLimits;
    } rows[] = {
        {"none", {}, 0.95, 0, false, false, false},
        {"NaN", {1.0, kNaN, 2.0}, 0.95, 0, false, false, false},
        {"infinity", {1.0, kInfinity, 2.0}, 0.95, 0, false, false, false},
        {"one", {2.5}, 0.95, 0, true, false, false},
        {"constant", Values(50, 0.1), 0.95, 0, true, true, true},
        {"confidence 0", good, 0.0, 0, true, true, true},
        {"confidence 1", good, 1.0, 0, true, false, false},
        {"confidence 2", good, 2.0, -1, true, false, false},
        {"confidence NaN", good, kNaN, 0, true, false, false},
        {"confidence -0.9", good, -0.9, 0, true, true, true},
        {"type 2", good, 0.95, 2, true, true, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto type = static_cast<IntervalType>(row.type);
        OneSampleWilcoxon one;
        one.count = size(row.x);
        EXPECT_EQ(RunKroOneSampleWilcoxon(&one, row.x.data(), row.confidence, type), 0);
        EXPECT_EQ(one.count, row.x.size());
        EXPECT_EQ(!IsNaN(one.estimate), row.hasEstimate);
        EXPECT_EQ(!IsNaN(one.achievedConfidence), row.hasConfidence);
        EXPECT_TRUE(IsNaN(one.lower) != row.hasLimits && IsNaN(one.upper) != row.hasLimits);

        MannWhitney two;
        two.count1 = size(row.x);
        two.count2 = size(good);
        const int status = RunKroMannWhitney(&two, row.x.data(), good.data(), row.confidence, type,
                                             AlternativeHypothesis::NotEqual);
        const bool isOrdinary = row.x.size() > 1 && row.x[0] != row.x[1];
        EXPECT_EQ(status, isOrdinary ? 0 : 30023);
        EXPECT_EQ(!IsNaN(two.estimate), row.hasEstimate && isOrdinary);
        EXPECT_EQ(!IsNaN(two.lower) && !IsNaN(two.upper), row.hasLimits && isOrdinary);
        EXPECT_EQ(!IsNaN(two.statistic), isOrdinary);
    }
}

TEST(RankIntervals, LeaveTheTailWholeForAnUnknownType) {
    const Values x = {3.0, -1.0, 4.0, 1.0, 5.0, 9.0};
    OneSampleWilcoxon lower;
    OneSampleWilcoxon unknown;
    lower.count = unknown.count = size(x);
    RunKroOneSampleWilcoxon(&lower, x.data(), 0.9, IntervalType::LowerBound);
    RunKroOneSampleWilcoxon(&unknown, x.data(), 0.9, static_cast<IntervalType>(2));
    EXPECT_EQ(unknown.achievedConfidence, lower.achievedConfidence);
}

TEST(OneSampleWilcoxon, TiesAtTheToleranceBelongToPairsButNotToObservations) {
    const Values x = {-16.0, -8.0, 8.0, 24.0, 0x1p52};  // the tolerance is 8
    OneSampleWilcoxon test;
    test.count = size(x);
    RunKroOneSampleWilcoxon(&test, x.data(), 0.9, IntervalType::TwoSided,
                            AlternativeHypothesis::NotEqual, 0.0);
    EXPECT_EQ(test.count, 5U);
    EXPECT_EQ(test.statistic, 10.5) << "9 sums above 8, one each at 8, 0 and -8";
}

}  // namespace
}  // namespace vela::test
