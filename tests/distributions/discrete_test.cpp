// Quantiles and P-values of counts against a walk over every outcome.

#include "support/entries.hpp"
#include "support/equality.hpp"
#include "vela/vela.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

namespace vela::test {
namespace {

struct Family {
    std::string name;
    Arguments parameters;
    int smallest;
    int largest;  // of the outcomes looked at

    double cdf(double x, bool upper) const { return call("Cdf", x, {upper ? 1.0 : 0.0}); }
    double inverse(double p) const { return call("InvCdf", p, {}); }

private:
    double call(const char* kind, double first, const Arguments& last) const {
        Arguments arguments = {first};
        arguments.insert(arguments.end(), parameters.begin(), parameters.end());
        arguments.insert(arguments.end(), last.begin(), last.end());
        return entry(name + kind).scalar(arguments);
    }
};

std::vector<Family> families() {
    std::vector<Family> result = {{"Poisson", {1e-5}, 0, 200},
                                  {"Poisson", {0.5}, 0, 200},
                                  {"Poisson", {4.0}, 0, 200},
                                  {"Poisson", {100.0}, 0, 200},
                                  {"Hypergeometric", {7, 4, 4}, 1, 4},
                                  {"Hypergeometric", {200, 100, 100}, 0, 100},
                                  {"Hypergeometric", {200, 3, 190}, 0, 3},
                                  {"Hypergeometric", {1000000, 400, 300000}, 0, 400},
                                  {"IntegerUniform", {-5, -5}, -5, -5},
                                  {"IntegerUniform", {-5, 5}, -5, 5},
                                  {"IntegerUniform", {-5, 184}, -5, 184}};
    for (const double p : {1e-5, 0.1, 0.5, 2.0 / 3.0, 0.999}) {
        for (const int n : {1, 2, 7, 50, 200}) {
            result.push_back({"Binomial", {static_cast<double>(n), p}, 0, n});
        }
        result.push_back({"Geometric", {p}, 0, 200});
        for (const double r : {0.01, 1.0, 3.5, 100.0}) {
            result.push_back({"NegBinomial", {p, r}, 0, 200});
        }
    }
    return result;
}

struct Tails {
    double lower;
    double upper;
};

/// The rule of the quantiles. A lower tail next to 1 has its half-ulp of rounding on top.
bool reaches(const Tails& tails, double p) {
    return tails.lower <= tails.upper ? tails.lower >= p * (1.0 - 1e-13)
                                      : tails.upper <= (1.0 - p) * (1.0 + 1e-13) + 0x1p-54;
}

TEST(DiscreteQuantiles, AreTheFirstOutcomeThatReachesPAtEveryStepAndNextToIt) {
    for (const Family& family : families()) {
        std::vector<Tails> tails;
        for (int k = family.smallest; k <= family.largest; ++k) {
            tails.push_back({family.cdf(k, false), family.cdf(k, true)});
        }
        for (std::size_t i = 0; i < tails.size(); ++i) {
            const double step = tails[i].lower;
            const double mass = i == 0 ? step : tails[i - 1].upper - tails[i].upper;
            if (step > 0.0 && step < 1.0 && mass > 1e-15) {
                ASSERT_EQ(family.inverse(step), family.smallest + static_cast<int>(i))
                    << family.name << testing::PrintToString(family.parameters)
                    << " at its own cumulative probability " << step;
            }
            for (const double p : {std::nextafter(step, 0.0), step, std::nextafter(step, 1.0)}) {
                const auto first =
                    std::find_if(tails.begin(), tails.end(),
                                 [=](const Tails& candidate) { return reaches(candidate, p); });
                if (p > 0.0 && p < 1.0 && first != tails.end()) {
                    ASSERT_EQ(family.inverse(p), family.smallest + (first - tails.begin()))
                        << family.name << testing::PrintToString(family.parameters)
                        << " at p = " << p << ", 1 - p = " << 1.0 - p;
                }
            }
        }
    }
}

TEST(DiscreteQuantiles, NeedFewStepsFarFromTheirStart) {
    // Each of these would walk millions of outcomes; the answers are cumulative probabilities' own.
    EXPECT_EQ(GeometricInvCdf(GeometricCdf(4e9, 1e-10, false), 1e-10), 4e9);
    EXPECT_EQ(NegBinomialInvCdf(NegBinomialCdf(1e7, 1e-7, 0.01, false), 1e-7, 0.01), 1e7);
    EXPECT_EQ(BinomialInvCdf(BinomialCdf(4e7, 1e8, 0.4, false), 100000000, 0.4), 4e7);
}

TEST(DiscreteQuantiles, OfASureCountAreThatCountForEveryProbability) {
    for (const double p : {0.0, 0.5, 1.0}) {
        EXPECT_EQ(BinomialInvCdf(p, 2, 0.0), 0.0);
        EXPECT_EQ(BinomialInvCdf(p, 2, 1.0), 2.0);
        EXPECT_EQ(PoissonInvCdf(p, 0.0), 0.0);
        EXPECT_EQ(GeometricInvCdf(p, 1.0), 0.0);
        EXPECT_EQ(NegBinomialInvCdf(p, 1.0, 2.5), 0.0);
        EXPECT_EQ(HypergeometricInvCdf(p, 5, 5, 3), 3.0);
    }
}

/// Expects the P-value of every outcome, counted from 0, to be the total probability of all
/// outcomes that are not more probable.
void expect_two_sided(const std::vector<double>& masses, const std::function<double(int)>& got) {
    constexpr double kTolerance = 1e-13;  // a few dozen additions
    for (std::size_t k = 0; k < masses.size(); ++k) {
        double sum = 0.0;
        for (const double mass : masses) {
            sum += mass <= masses[k] * (1.0 + 1e-7) ? mass : 0.0;
        }
        EXPECT_TRUE(within_relative(got(static_cast<int>(k)), sum, kTolerance)) << k;
    }
}

TEST(BinomialPValue, AddsUpTheOutcomesThatAreNotMoreProbable) {
    using enum EAlternative;
    for (const double p : {0.001, 0.2, 1.0 / 3.0, 0.75, 0.99}) {
        for (int n = 0; n <= 24; ++n) {
            SCOPED_TRACE(testing::Message() << "of " << n << ", p = " << p);
            std::vector<double> masses;
            for (int k = 0; k <= n; ++k) {
                masses.push_back(BinomialPdf(k, n, p));
                EXPECT_EQ(BinomialPValue(k, n, p, UpperTailed), BinomialCdf(k - 1, n, p, true));
                EXPECT_EQ(BinomialPValue(k, n, p, LowerTailed), BinomialCdf(k, n, p, false));
            }
            expect_two_sided(masses,
                             [&](int k) { return BinomialPValue(k + 0.9, n, p, TwoSided); });
        }
    }
}

TEST(HypergeometricPValue, AddsUpTheOutcomesThatAreNotMoreProbable) {
    for (int population = 0; population <= 12; ++population) {
        for (int events = 0; events <= population; ++events) {
            for (int sample = 0; sample <= population; ++sample) {
                SCOPED_TRACE(testing::Message() << population << " " << events << " " << sample);
                std::vector<double> masses;
                for (int k = 0; k <= population; ++k) {
                    masses.push_back(HypergeometricPdf(k, population, events, sample));
                }
                expect_two_sided(masses, [&](int k) {
                    return HypergeometricPValue(k, population, events, sample,
                                                EAlternative::TwoSided);
                });
            }
        }
    }
}

}  // namespace
}  // namespace vela::test
