#include "descriptive/hard_samples.hpp"
#include "support/floating_point_state.hpp"
#include "support/reference_cases.hpp"
#include "support/special_values.hpp"
#include "vela/vela.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfenv>
#include <cmath>
#include <map>
#include <numeric>

namespace vela::test {
namespace {

using Positions = std::vector<unsigned int>;

void trimmed_mean(const ReferenceCase& c, Results& r) {
    int status = -1;
    r.value("value") = c.has("alpha") ? v1::GetTrimmedMean(c.x(), c.n(), c.get("alpha"), &status)
                                      : v1::GetKroTrimmedMean(c.x(), c.n(), &status);
    r.value("status") = status;
}

const Runners kFunctions = {
    {"GetSampleQuantiles",
     [](auto& c, auto& r) {
         const Values& p = c.arguments.at("p");
         Values& out = r["out"] = Values(p.size(), -1.0);
         r.value("status") = v1::GetSampleQuantiles(c.x(), c.n(), c.integer("method"), out.data(),
                                                    p.data(), size(p));
     }},
    {"GetOrder",
     [](auto& c, auto& r) {
         Positions order(c.n());
         v1::GetOrder(c.x(), c.n(), order.data());
         r["out"] = {order.begin(), order.end()};
     }},
    {"GetRank",
     [](auto& c, auto& r) {
         Values& ranks = r["out"] = Values(c.n());
         r.value("status") = v1::GetRank(c.x(), c.n(), ranks.data());
     }},
    {"GetMode",
     [](auto& c, auto& r) {
         Values& modes = r["modes"] = Values(static_cast<std::size_t>(c.integer("maxModes")));
         unsigned int number = 99;
         unsigned int frequency = 99;
         r.value("status") =
             v1::GetMode(c.x(), c.n(), modes.data(), size(modes), &number, &frequency);
         r.value("numModes") = number;
         r.value("modeFrequency") = frequency;
     }},
    {"GetTrimmedMean", trimmed_mean},
    {"GetKroTrimmedMean", trimmed_mean},
};

TEST(OrderStatistics, MatchReferenceValues) { check_reference_cases("order.csv", kFunctions); }

// On both sides of every size at which the method of sorting or selecting changes.
constexpr std::size_t kSizes[] = {1,   2,    3,    19,   20,    50,    192,
                                  193, 1024, 1025, 6000, 65536, 65537, 300000};

/// NaN after everything else; equal values and NaN by position.
Positions stable_order(const Values& x) {
    Positions order(x.size());
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(), [&](unsigned int a, unsigned int b) {
        return std::isnan(x[a]) ? false : std::isnan(x[b]) || x[a] < x[b];
    });
    return order;
}

Values brute_ranks(const Values& x, const Positions& order) {
    Values ranks(x.size());
    for (std::size_t first = 0; first < x.size();) {
        std::size_t end = first + 1;
        while (end < x.size() && x[order[end]] == x[order[first]]) {
            ++end;
        }
        for (std::size_t i = first; i < end; ++i) {
            ranks[order[i]] = static_cast<double>(first + end + 1) / 2.0;
        }
        first = end;
    }
    return ranks;
}

/// The host may have armed its traps: NaN, signalling ones included, must not fire them.
TEST(OrderAndRanks, AgreeWithAStableSortAndRaiseNoFault) {
    for (const std::size_t n : kSizes) {
        for (const Values& x : hard_samples(n)) {
            SCOPED_TRACE(testing::Message() << n << " values from " << x[0]);
            const Positions expected = stable_order(x);
            Positions order(n);
            Values ranks = x;
            std::feclearexcept(FE_ALL_EXCEPT);
            v1::GetOrder(x.data(), size(x), order.data());
            EXPECT_EQ(v1::GetRank(ranks.data(), size(x), ranks.data()), 0);
            EXPECT_TRUE(is_default_state());
            EXPECT_EQ(order, expected);
            const Values expectedRanks = brute_ranks(x, expected);
            EXPECT_EQ(ranks, expectedRanks) << "in place";
            for (const std::size_t before : {std::size_t{0}, n / 4}) {
                Values overwritten(before);
                overwritten.insert(overwritten.end(), x.begin(), x.end());
                auto* const places = reinterpret_cast<unsigned int*>(overwritten.data());
                v1::GetOrder(overwritten.data() + before, size(x), places);
                EXPECT_TRUE(std::equal(expected.begin(), expected.end(), places))
                    << "from " << before << " values before the sample";
            }
            Values shifted = x;
            shifted.push_back(0.0);
            v1::GetRank(shifted.data(), size(x), shifted.data() + 1);
            EXPECT_TRUE(std::equal(expectedRanks.begin(), expectedRanks.end(), shifted.begin() + 1))
                << "one place on";
        }
    }
}

bool same_values(const Values& a, const Values& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](double p, double q) { return p == q || (p != p && q != q); });
}

/// Method 1 at (k - 1/2) / n is x(k) exactly: with a few probabilities by selection, with many from
/// a sorted copy.
TEST(SampleQuantiles, SelectWhatSortingFindsAndRaiseNoFault) {
    for (const std::size_t n : kSizes) {
        for (const Values& x : hard_samples(n)) {
            SCOPED_TRACE(testing::Message() << n << " values from " << x[0]);
            const Positions order = stable_order(x);
            for (const unsigned int wanted : {1U, 7U, 127U, 128U}) {
                Values p;
                Values expected;
                for (unsigned int i = 0; i < wanted; ++i) {
                    const std::size_t k = (n - 1) * (i * 13U % wanted) / std::max(wanted - 1, 1U);
                    p.push_back((static_cast<double>(k) + 0.5) / static_cast<double>(n));
                    expected.push_back(x[order[k]]);
                }
                std::feclearexcept(FE_ALL_EXCEPT);
                EXPECT_EQ(v1::GetSampleQuantiles(x.data(), size(x), 1, p.data(), p.data(), wanted),
                          0);
                EXPECT_TRUE(is_default_state());
                EXPECT_TRUE(same_values(p, expected)) << "in place, " << wanted;
            }
        }
    }
}

/// The values that occur most often, ascending, when some value occurs twice.
Values counted_modes(const Values& x, std::size_t maxModes, unsigned int* frequency) {
    std::map<double, unsigned int> counts;
    for (const double value : x) {
        if (!std::isnan(value)) {
            *frequency = std::max(*frequency, ++counts[value]);
        }
    }
    *frequency = *frequency > 1 ? *frequency : 0;
    Values modes;
    for (const auto& [value, count] : counts) {
        if (count == *frequency && modes.size() < maxModes) {
            modes.push_back(value);
        }
    }
    modes.resize(maxModes, kNaN);
    return modes;
}

TEST(Mode, IsTheValueThatOccursMostOften) {
    for (const std::size_t n : {1U, 2U, 3U, 50U, 1500U, 6000U, 65537U}) {
        for (Values x : hard_samples(n)) {
            SCOPED_TRACE(testing::Message() << n << " values from " << x[0]);
            const std::size_t slots = std::min<std::size_t>(n, 6);
            unsigned int expectedFrequency = 0;
            const Values expected = counted_modes(x, slots, &expectedFrequency);
            Values apart(slots);
            for (Values* modes : {&apart, &x}) {
                unsigned int number = 0;
                unsigned int frequency = 0;
                std::feclearexcept(FE_ALL_EXCEPT);
                EXPECT_EQ(
                    v1::GetMode(x.data(), size(x), modes->data(), size(apart), &number, &frequency),
                    0);
                EXPECT_TRUE(is_default_state());
                modes->resize(slots);
                EXPECT_TRUE(same_values(*modes, expected)) << (modes == &x ? "in place" : "apart");
                EXPECT_EQ(frequency, expectedFrequency);
            }
        }
    }
}

}  // namespace
}  // namespace vela::test
