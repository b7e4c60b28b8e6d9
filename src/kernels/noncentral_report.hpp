#ifndef VELA_KERNELS_NONCENTRAL_REPORT_HPP
#define VELA_KERNELS_NONCENTRAL_REPORT_HPP

#include "conventions/error_channel.hpp"
#include "kernels/limits.hpp"
#include "kernels/noncentral_mixture.hpp"
#include "kernels/normal_start.hpp"
#include "kernels/positive_quantile.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

/// What the noncentral chi-square and F kernels share besides the mixture: the bounds of what they
/// serve, the power laws at the ends, reports and the search for quantiles.
namespace vela::kernels {

inline constexpr double kSmallestDf = 1e-20;
inline constexpr double kLargestDf = 2e8;  // the rounding of df / 2 + j would show in far tails
inline constexpr double kLargestNoncentrality = 4e6;  // the number of terms grows as its root

/// Beyond it, and below its reciprocal, a tail is a power of the variable or 0.
inline constexpr double kPowerLawEdge = 1e100;
inline constexpr double kLogPowerLawEdge = 230.25850929940458;

/// The Poisson mean; one that counts for nothing is kept away from the denormal numbers.
inline double poisson_mean(double noncentrality) {
    constexpr double smallest = 1e-300;
    return std::max(0.5 * noncentrality, smallest);
}

/// Beyond the edge where the lower tail is a power of the variable: `logFactor` <= 0 is the power
/// times the logarithm of its distance.
inline MixtureTails below_edge(const MixtureTails& edge, double power, double logFactor) {
    const double lower = edge.lower * std::exp(logFactor);
    return {lower, edge.upper - edge.lower * std::expm1(logFactor), power * lower, edge.isReliable};
}

inline MixtureTails above_edge(const MixtureTails& edge, double power, double logFactor) {
    const MixtureTails mirrored =
        below_edge({edge.upper, edge.lower, edge.slope, edge.isReliable}, power, logFactor);
    return {mirrored.upper, mirrored.lower, mirrored.slope, mirrored.isReliable};
}

/// Writes what the caller of the kernel sees. The level starts afresh: what a beta probability on
/// the way had to say means nothing for the sum.
template <std::size_t size>
void report(const MixtureTails& tails, const char (&name)[size], double* lower, double* upper) {
    conventions::enter_kernel(name);
    if (!tails.isReliable) {
        conventions::raise_level(conventions::kNoConvergence, name);
        return;
    }
    *lower = tails.lower < kUnderflow ? 0.0 : tails.lower;
    *upper = tails.upper < kUnderflow ? 0.0 : tails.upper;
    if (*lower == 0.0 || *upper == 0.0) {
        conventions::raise_level(conventions::kWarning, name);
    }
}

/// The z with P(Z <= z) = p, 0 < p < 1; a start only.
inline double normal_quantile_start(double p) {
    return p <= 0.5 ? -normal_start(p) : normal_start(1.0 - p);
}

/// Runs the search for P(X <= x) = p, 0 < p < 1; tailsAt(x) gives MixtureTails.
template <std::size_t size, class TailsAt>
void report_quantile(double p, double start, TailsAt tailsAt, const char (&name)[size], double* x) {
    const bool isUpper = p > 0.5;
    conventions::enter_kernel(name);
    if (p < kUnderflow) {
        conventions::raise_level(conventions::kArgumentTooLarge, name);
        return;
    }
    bool isReliable = true;
    double found = 0.0;
    const auto evaluate = [&](double at) {
        const MixtureTails tails = tailsAt(at);
        isReliable = tails.isReliable;
        return tails.pick(isUpper);
    };
    const QuantileOutcome outcome =
        find_positive_quantile(isUpper ? 1.0 - p : p, isUpper, start, evaluate, &found);
    conventions::enter_kernel(name);
    if (outcome == QuantileOutcome::kTooLarge) {
        conventions::raise_level(conventions::kArgumentTooLarge, name);
    } else if (outcome == QuantileOutcome::kNotFound || !isReliable) {
        conventions::raise_level(conventions::kNoConvergence, name);
    } else {
        *x = found;
    }
}

}  // namespace vela::kernels

#endif
