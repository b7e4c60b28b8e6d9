#include "support/equality.hpp"
#include "support/floating_point_state.hpp"
#include "support/reference_cases.hpp"
#include "vela/vela.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>

namespace vela::test {
namespace {

using Positions = std::vector<unsigned int>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

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
         Values& out = r["out"] = Values(p.size());
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

/// Samples that once are the worst for some sort: NaN of both signs, both zeros, infinities,
/// denormals, clusters that agree in most bits, few values, sorted and reversed data.
Values hostile_sample(int kind, std::size_t n) {
    std::mt19937_64 bits(static_cast<std::uint64_t>(kind) + 1);
    const auto any = [](std::uint64_t word) { return std::bit_cast<double>(word); };
    Values x(n);
    for (std::size_t i = 0; i < n; ++i) {
        const std::uint64_t word = bits();
        const auto position = static_cast<double>(i);
        switch (kind) {
            case 0: x[i] = static_cast<double>(word >> 11U); break;
            case 1: x[i] = any(word); break;
            case 2: x[i] = word % 3 == 0 ? kNaN : word % 3 == 1 ? -kNaN : kInfinity; break;
            case 3: x[i] = word % 2 == 0 ? 0.0 : word % 4 == 1 ? -0.0 : any(word % 8); break;
            case 4:
                x[i] = i % 17 == 0 ? 1e300 : 1.0 + static_cast<double>(word % 999) * 0x1p-52;
                break;
            case 5:
                x[i] = std::ldexp(1.0 + static_cast<double>(word % 64) * 0x1p-50,
                                  -static_cast<int>(word >> 58U));
                break;
            case 6: x[i] = static_cast<double>(word % 5) - 2.0; break;
            case 7: x[i] = position; break;
            case 8: x[i] = -position; break;
            case 9: x[i] = 3.25; break;
            default:
                x[i] = i < 2 ? (i == 0 ? -1e308 : 1e308)
                             : 1e-300 + static_cast<double>(word % 4096) * 1e-315;
                break;
        }
    }
    return x;
}

constexpr int kHostileKinds = 11;
// On both sides of every size at which the method of sorting or selecting changes.
constexpr std::size_t kSizes[] = {1,   2,    3,    19,   20,    50,    192,
                                  193, 1024, 1025, 6000, 65536, 65537, 200000};

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

TEST(OrderAndRanks, AgreeWithAStableSortOfHostileData) {
    for (int kind = 0; kind < kHostileKinds; ++kind) {
        for (const std::size_t n : kSizes) {
            const Values x = hostile_sample(kind, n);
            const Positions expected = stable_order(x);
            const auto count = static_cast<unsigned int>(n);
            Positions order(n);
            v1::GetOrder(x.data(), count, order.data());
            EXPECT_EQ(order, expected) << kind << " " << n;
            Values ranks = x;
            EXPECT_EQ(v1::GetRank(ranks.data(), count, ranks.data()), 0);
            EXPECT_EQ(ranks, brute_ranks(x, expected)) << "in place, " << kind << " " << n;
        }
    }
}

bool same_values(const Values& a, const Values& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](double p, double q) { return p == q || (p != p && q != q); });
}

/// Method 1 at (k - 1/2) / n is x(k) exactly: with a few probabilities by selection, with many from
/// a sorted copy.
TEST(SampleQuantiles, SelectWhatSortingFinds) {
    for (int kind = 0; kind < kHostileKinds; ++kind) {
        for (const std::size_t n : kSizes) {
            const Values x = hostile_sample(kind, n);
            const Positions order = stable_order(x);
            const auto count = static_cast<unsigned int>(n);
            for (const unsigned int wanted : {1U, 7U, 127U, 128U}) {
                Values p;
                Values expected;
                for (unsigned int i = 0; i < wanted; ++i) {
                    const std::size_t k = (n - 1) * (i * 13U % wanted) / wanted;
                    p.push_back((static_cast<double>(k) + 0.5) / static_cast<double>(n));
                    expected.push_back(x[order[k]]);
                }
                EXPECT_EQ(v1::GetSampleQuantiles(x.data(), count, 1, p.data(), p.data(), wanted),
                          0);
                EXPECT_TRUE(same_values(p, expected)) << "in place, " << kind << " " << n;
            }
        }
    }
}

TEST(SampleQuantiles, RejectUnknownMethodsAndProbabilities) {
    const double x[] = {3.0, 1.0, 2.0};
    const double p[] = {-1e-300, 1.0000000000000002, kNaN, -0.0};
    double out[] = {7.0, 7.0, 7.0, 7.0};
    for (const int method : {-1, 0, 10}) {
        EXPECT_EQ(v1::GetSampleQuantiles(x, 3, method, out, p, 4), 30017);
        EXPECT_EQ(v1::GetSampleQuantiles(nullptr, 0, method, out, p, 4), 30017);
        EXPECT_EQ(out[0], 7.0);
    }
    EXPECT_EQ(v1::GetSampleQuantiles(x, 3, 7, out, p, 4), 0);
    EXPECT_TRUE(IsNaN(out[0]) && IsNaN(out[1]) && IsNaN(out[2]));
    EXPECT_EQ(out[3], 1.0);
}

/// Written as the definition is: each value against every later one.
Values scanned_modes(Values x, std::size_t maxModes, unsigned int* frequency) {
    std::erase_if(x, [](double value) { return std::isnan(value); });
    std::sort(x.begin(), x.end());
    std::ptrdiff_t best = 0;
    Values modes;
    for (std::size_t i = 0; i < x.size(); ++i) {
        if (i > 0 && x[i] == x[i - 1]) {
            continue;
        }
        const std::ptrdiff_t later =
            std::count(x.begin() + static_cast<std::ptrdiff_t>(i) + 1, x.end(), x[i]);
        if (later > best) {
            best = later;
            modes.clear();
        }
        if (later == best && best > 0 && modes.size() < maxModes) {
            modes.push_back(x[i]);
        }
    }
    *frequency = best > 0 ? static_cast<unsigned int>(best + 1) : 0;
    modes.resize(maxModes, kNaN);
    return modes;
}

TEST(Mode, IsThatOfTheQuadraticScan) {
    for (int kind = 0; kind < kHostileKinds; ++kind) {
        for (const std::size_t n : {1U, 2U, 3U, 50U, 1500U}) {
            Values x = hostile_sample(kind, n);
            for (double& value : x) {
                value = kind == 0 ? std::fmod(value, 40.0) : value;
            }
            const std::size_t slots = std::min<std::size_t>(n, 6);
            unsigned int expectedFrequency = 0;
            const Values expected = scanned_modes(x, slots, &expectedFrequency);
            unsigned int number = 0;
            unsigned int frequency = 0;
            EXPECT_EQ(v1::GetMode(x.data(), static_cast<unsigned int>(n), x.data(),
                                  static_cast<unsigned int>(slots), &number, &frequency),
                      0);
            x.resize(slots);
            EXPECT_TRUE(same_values(x, expected)) << kind << " " << n;
            EXPECT_EQ(frequency, expectedFrequency) << kind << " " << n;
        }
    }
    unsigned int number = 9;
    unsigned int frequency = 9;
    EXPECT_EQ(v1::GetMode(nullptr, 0, nullptr, 0, &number, &frequency), 0);
    EXPECT_EQ(number + frequency, 0U);
}

TEST(TrimmedMean, CutsNothingBeyondTheSample) {
    const double x[] = {1e308, 1.0, -1e308, 2.0};
    int status = -1;
    for (const double alpha : {0.5, 0.99, 1.0, 1e300, kInfinity, -1e-300, -kInfinity, kNaN}) {
        EXPECT_TRUE(IsNaN(v1::GetTrimmedMean(x, 4, alpha, &status))) << alpha;
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(v1::GetTrimmedMean(x, 4, 0.49, &status), 1.5);
}

/// The host may have armed its traps: NaN, signalling ones included, must not fire them.
TEST(OrderStatistics, RaiseNoFaultOnNaN) {
    for (const std::size_t n : {5U, 500U, 5000U}) {
        Values x = hostile_sample(2, n);
        x[2] = std::numeric_limits<double>::signaling_NaN();
        const auto count = static_cast<unsigned int>(n);
        const double probabilities[] = {0.0, 1.0, kNaN, -1.0};
        Values out(n);
        Positions order(n);
        unsigned int number = 0;
        std::feclearexcept(FE_ALL_EXCEPT);
        EXPECT_EQ(v1::GetSampleQuantiles(x.data(), count, 6, out.data(), probabilities, 4), 0);
        EXPECT_EQ(v1::GetRank(x.data(), count, out.data()), 0);
        EXPECT_EQ(v1::GetMode(x.data(), count, out.data(), 3, &number, &number), 0);
        v1::GetOrder(x.data(), count, order.data());
        EXPECT_TRUE(is_default_state()) << n;
    }
}

}  // namespace
}  // namespace vela::test
