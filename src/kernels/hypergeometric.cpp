// Hypergeometric probabilities. The mass is a quotient of three binomial masses with the event
// probability p = sample / population (Loader 2000): the binomial factors cancel the powers of p,
// and no factorial is ever formed.
//
// A tail is summed away from the mode, mass by mass through their ratios. The masses are
// log-concave, so that the ratios fall from below 1 and the sum ends after a few standard
// deviations, which are at most 23,171 for populations in the range of an int. Below the mode the
// lower tail is summed, from the mode on the upper one, so that the summed tail is never close to 1
// and its complement keeps its digits.

#include "kernels/hypergeometric.hpp"

#include "conventions/error_channel.hpp"
#include "kernels/discrete_quantile.hpp"
#include "kernels/limits.hpp"
#include "kernels/saddle_point.hpp"

#include <algorithm>
#include <cmath>

namespace vela::kernels {
namespace {

using conventions::enter_kernel;
using conventions::kInvalidArgument;
using conventions::kWarning;
using conventions::raise_level;

constexpr double kTermTolerance = 1e-17;  // of the last term to the sum, at ratios below 1 - 1e-4

/// The mass at a support point.
double mass_of(double k, const Urn& urn) {
    if (urn.smallest() == urn.largest()) {
        return 1.0;
    }
    const double population = urn.population;
    const double events = urn.events;
    const double sample = urn.sample;
    const double p = sample / population;
    const double q = (population - sample) / population;
    return binomial_mass(k, events, p, q) * (binomial_mass(sample - k, population - events, p, q) /
                                             binomial_mass(sample, population, p, q));
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
