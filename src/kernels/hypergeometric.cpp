// Hypergeometric probabilities. With the counts x of the table of events and non-events in and
// outside the sample, its margins m and the counts e that independence would give, the mass is
//
//   prod m! / (N! prod x!) = sqrt(prod m / (2 pi N prod x)) exp(S - D),  D = sum x ln(x / e),
//
// where S is what Stirling's formula leaves of the factorials (Loader 2000 for three binomial
// masses, whose deviances add up to D). x - e is the same in all four cells but for its sign, and
// an exact quotient of integers; so the deviances lose nothing. Populations up to 170 take the
// factorials as they stand.
//
// A tail is summed away from the mode, mass by mass through their ratios. The masses are
// log-concave, so that the ratios fall from below 1 and the sum ends after a few standard
// deviations, which are at most 23,171 for populations in the range of an int. Below the mode the
// lower tail is summed, from the mode on the upper one, so that the summed tail is never close to 1
// and its complement keeps its digits.

#include "kernels/hypergeometric.hpp"

#include "conventions/error_channel.hpp"
#include "kernels/beta_log.hpp"
#include "kernels/discrete_quantile.hpp"
#include "kernels/double_double.hpp"
#include "kernels/limits.hpp"
#include "kernels/saddle_point.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace vela::kernels {
namespace {

using conventions::enter_kernel;
using conventions::kInvalidArgument;
using conventions::kWarning;
using conventions::raise_level;

constexpr double kTermTolerance = 1e-17;  // of the last term to the sum, at ratios below 1 - 1e-4

constexpr double kTwoPi = 6.283185307179586;
constexpr int kLargestFactorial = 170;

constexpr auto kFactorials = [] {
    std::array<double, kLargestFactorial + 1> factorials{};
    DoubleDouble product{1.0, 0.0};
    for (std::size_t n = 0; n < factorials.size(); ++n) {
        product = n > 1 ? product * static_cast<double>(n) : product;
        factorials[n] = product.hi + product.lo;
    }
    return factorials;
}();

/// stirling_error() of the smallest counts; 0 for 0! because scale_of() has all of it.
constexpr double kStirlingErrors[16] = {0.0,
                                        0.08106146679532726,
                                        0.0413406959554093,
                                        0.02767792568499834,
                                        0.020790672103765093,
                                        0.016644691189821193,
                                        0.013876128823070748,
                                        0.01189670994589177,
                                        0.010411265261972096,
                                        0.009255462182712733,
                                        0.00833056343336287,
                                        0.007573675487951841,
                                        0.00694284010720953,
                                        0.006408994188004207,
                                        0.0059513701127588475,
                                        0.005554733551962801};

/// The table of a urn and k events in its sample.
struct Table {
    double counts[2][2];
    double events[2];  // margins: events and non-events,
    double sample[2];  // in the sample and outside
    double population;
    DoubleDouble excess;  // of counts[0][0] and counts[1][1] over their expectations, times
                          // population; the others fall short by it
};

Table table_of(double k, const Urn& urn) {
    const std::int64_t population = urn.population;
    const auto in = static_cast<std::int64_t>(k);
    const std::int64_t counts[2][2] = {
        {in, urn.events - in},
        {urn.sample - in, population - urn.events - urn.sample + in},
    };
    const std::int64_t excess = counts[0][0] * counts[1][1] - counts[0][1] * counts[1][0];
    const auto rounded = static_cast<double>(excess);
    const auto real = [](std::int64_t count) { return static_cast<double>(count); };
    return {{{real(counts[0][0]), real(counts[0][1])}, {real(counts[1][0]), real(counts[1][1])}},
            {real(urn.events), real(population - urn.events)},
            {real(urn.sample), real(population - urn.sample)},
            real(population),
            {rounded, real(excess - static_cast<std::int64_t>(rounded))}};
}

double factorial(double n) { return kFactorials[static_cast<std::size_t>(n)]; }

double small_population_mass(const Table& table) {
    double quotient = 1.0;
    for (int i = 0; i < 2; ++i) {  // binomial coefficients of either row
        quotient *= factorial(table.events[i]) /
                    (factorial(table.counts[i][0]) * factorial(table.counts[i][1]));
    }
    return quotient *
           (factorial(table.sample[0]) * factorial(table.sample[1]) / factorial(table.population));
}

/// e - x + x ln(x / e) for a cell that exceeds its expectation e by `excess` / population. What is
/// added to x ln(x / e) cancels in the sum of the cells.
DoubleDouble cell_deviance(double x, double row, double column, DoubleDouble excess,
                           double population) {
    if (x == 0.0) {
        return two_product(row, column) / population;
    }
    const DoubleDouble scale = two_product(population, x);
    const DoubleDouble d = -excess / scale;
    if (d.hi >= -0.5) {
        return log1p_deficit(d) * x;
    }
    return (d - log_two_doubles(two_product(row, column) / scale)) * x;
}

/// n! is sqrt(scale_of(n)) (n / e)^n exp(remainder_of(n)).
double scale_of(double n) { return n > 0.0 ? kTwoPi * n : 1.0; }

double remainder_of(double n) {
    return n < 16.0 ? kStirlingErrors[static_cast<std::size_t>(n)] : stirling_error(n);
}

double large_population_mass(const Table& table) {
    DoubleDouble deviance;
    double numerator = 1.0;
    double denominator = scale_of(table.population);
    double remainder = -remainder_of(table.population);
    for (int i = 0; i < 2; ++i) {
        numerator *= scale_of(table.events[i]) * scale_of(table.sample[i]);
        remainder += remainder_of(table.events[i]) + remainder_of(table.sample[i]);
        for (int j = 0; j < 2; ++j) {
            const double x = table.counts[i][j];
            denominator *= scale_of(x);
            remainder -= remainder_of(x);
            deviance =
                deviance + cell_deviance(x, table.events[i], table.sample[j],
                                         i == j ? table.excess : -table.excess, table.population);
        }
    }
    const DoubleDouble exponent = deviance + DoubleDouble{-remainder, 0.0};
    constexpr double noDoubleLeft = 745.0;
    return exponent.hi > noDoubleLeft
               ? 0.0
               : std::exp(-exponent.hi) * (1.0 - exponent.lo) * std::sqrt(numerator / denominator);
}

/// The mass at a support point.
double mass_of(double k, const Urn& urn) {
    if (urn.smallest() == urn.largest()) {
        return 1.0;
    }
    const Table table = table_of(k, urn);
    return urn.population <= kLargestFactorial ? small_population_mass(table)
                                               : large_population_mass(table);
}

/// P(X = k - 1) / P(X = k)
double falling_ratio_at(double k, const Urn& urn) {
    const double rest = static_cast<double>(urn.population) - urn.events - urn.sample;
    return k * (rest + k) / ((urn.events - k + 1.0) * (urn.sample - k + 1.0));
}

/// P(X <= k) / P(X = k) for a urn with its mode above k.
double lower_sum(double k, const Urn& urn) {
    double sum = 1.0;
    double term = 1.0;
    for (double j = k; j > 0.0 && term > kTermTolerance * sum; j -= 1.0) {
        term *= falling_ratio_at(j, urn);
        sum += term;
    }
    return sum;
}

/// What the quantile search asks for.
struct Hypergeometric {
    const Urn& urn;

    void tails(double k, double* lower, double* upper) const { hypergeo_df(k, urn, lower, upper); }
    double mass(double k) const { return mass_of(k, urn); }
    double falling_ratio(double k) const { return falling_ratio_at(k, urn); }
    static constexpr double precision = 1e-11;
};

}  // namespace

double Urn::smallest() const {
    return std::max(0.0, static_cast<double>(sample) + events - population);
}

double Urn::largest() const { return std::min(events, sample); }

double Urn::mode() const {
    const double quotient = (sample + 1.0) * (events + 1.0) / (population + 2.0);
    return std::clamp(std::floor(quotient), smallest(), largest());
}

void hypergeo_df(double k, const Urn& urn, double* lower, double* upper) {
    enter_kernel("hypergeo_df");
    *lower = *upper = kLargestDouble;
    if (k != k || !urn.is_valid()) {
        raise_level(kInvalidArgument, "hypergeo_df");
        return;
    }
    if (k < urn.smallest() || k >= urn.largest()) {
        *lower = k < urn.smallest() ? 0.0 : 1.0;
        *upper = k < urn.smallest() ? 1.0 : 0.0;
        return;
    }
    const bool isBelowMode = k < urn.mode();
    double tail = 0.0;
    if (isBelowMode) {
        tail = mass_of(k, urn) * lower_sum(k, urn);
    } else {
        // counting the non-events of the sample turns the upper tail into a lower one
        const Urn nonEvents{urn.population, urn.population - urn.events, urn.sample};
        const double first = k + 1.0;
        tail = mass_of(first, urn) * lower_sum(urn.sample - first, nonEvents);
    }
    if (tail < kUnderflow) {
        raise_level(kWarning, "hypergeo_df");
        tail = 0.0;
    }
    *lower = isBelowMode ? tail : 1.0 - tail;
    *upper = isBelowMode ? 1.0 - tail : tail;
}

double hypergeo_pdf(double k, const Urn& urn) {
    enter_kernel("hypergeo_pdf");
    if (k != k || !urn.is_valid()) {
        raise_level(kInvalidArgument, "hypergeo_pdf");
        return kLargestDouble;
    }
    return k < urn.smallest() || k > urn.largest() ? 0.0 : mass_of(k, urn);
}

void hypergeo_lower_quant(double probability, const Urn& urn, double* k) {
    enter_kernel("hypergeo_lower_quant");
    *k = -kLargestDouble;
    if (!urn.is_valid()) {
        raise_level(kInvalidArgument, "hypergeo_lower_quant");
        return;
    }
    const double size = std::max(urn.population, 1);
    const double p = urn.events / size;
    const double left = size - urn.sample;
    const double sd = std::sqrt(urn.sample * p * (1.0 - p) * (left / std::max(size - 1.0, 1.0)));
    const double skewness =
        sd > 1e-8 ? (1.0 - 2.0 * p) * (left - urn.sample) / (std::max(size - 2.0, 1.0) * sd) : 0.0;
    const DiscreteShape shape{urn.sample * p, sd, skewness, urn.smallest(), urn.largest(), true};
    find_discrete_quantile("hypergeo_lower_quant", probability, shape, Hypergeometric{urn}, k);
}

}  // namespace vela::kernels
