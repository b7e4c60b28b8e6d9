// Poisson mixtures of beta probabilities, with N ~ Poisson(mean), A_j = a + j:
//     lower = sum_j P(N = j) I_x(A_j, b),   upper = sum_j P(N = j) (1 - I_x(A_j, b)).
// All terms are positive, and both follow from one step g_j = x^A y^b Gamma(A + b) / (Gamma(A + 1)
// Gamma(b)) = I_x(A, b) - I_x(A + 1, b). Only sums of positive numbers are formed: the upper tail
// runs upward in j, where its beta probabilities grow by g_j, and the lower tail downward, where
// its own do. (Starting in the middle, as Benton & Krishnamoorthy 2003, would subtract in one
// direction, which ruins a far tail: the Poisson weights rise where the digits are lost.)
//
// Where to start: among the events that make up a tail, N is nearly Poisson with the mean tilted by
// the saddle point w of the moment generating function,
//     mode = mean / w,   x (a + b) w^2 - (a - mean x) w - mean = 0,
// and the terms fall at least as fast as that Poisson distribution on either side, because the beta
// probabilities are log-concave in j. The number of terms is about 18 sqrt(mode).
//
// The tail away from the mean is summed, the other is its complement unless it is the small one
// after all, as with a shape far below 1.
//
// The incomplete gamma function is the beta function with an endless second shape: the kernel for
// it in incomplete_gamma.hpp stops at 1e-9 by design.

#include "kernels/noncentral_mixture.hpp"

#include "kernels/saddle_point.hpp"

#include <algorithm>
#include <cmath>

namespace vela::kernels {
namespace {

constexpr double kNegligible = 1e-19;     // of a sum: thousands of terms left out stay below 1e-15
constexpr double kComplementLimit = 0.9;  // a tail above this has lost a digit of the other
// Times every weight: the first terms of a sum are far below it, and denormal numbers are slow.
constexpr double kScale = 0x1p500;
constexpr int kMaxTerms = 1'000'000;  // far beyond the largest mean

/// One mixture at one point.
struct Mixture {
    BetaPoint point;
    double a, b;
    double mean;
    double mode;  // of N among the events that make up the tail away from the mean

    double x() const { return point.x.hi; }
    double y() const { return point.y.hi; }
};

struct Sum {
    double tail = 0.0;
    double slope = 0.0;
    bool isReliable = true;
};

// ---------------------------------------------------------------- start values

/// At the first shape A: I_x(A, b) - I_x(A + 1, b) and a beta tail, both as long as a double holds
/// them; the weights may bring a tail back that by itself counts for nothing.
struct Start {
    double step = 0.0;
    double tail = 0.0;
    bool isReliable = true;
};

Start start_at(const Mixture& mixture, double A, bool isUpper) {
    double lower = 0.0;
    double upper = 0.0;
    double power = 0.0;
    const bool isReliable =
        BetaShapes(A, mixture.b).tails_and_power(mixture.point, &lower, &upper, &power);
    return {power / A, isUpper ? upper : lower, isReliable};
}

// ---------------------------------------------------------------- sums

Sum unscaled(const Sum& sum) { return {sum.tail / kScale, sum.slope / kScale, sum.isReliable}; }

Sum sum_upward(const Mixture& mixture) {
    const double x = mixture.x();
    const double total = mixture.a + mixture.b;
    const double end = std::max(mixture.mode, mixture.mean);
    double j = std::max(0.0, std::floor(mixture.mode - 9.0 * std::sqrt(mixture.mode) - 3.0));
    double weight = kScale * poisson_mass(j, mixture.mean);
    auto [step, tail, isReliable] = start_at(mixture, mixture.a + j, true);
    Sum sum{0.0, 0.0, isReliable};
    for (int n = 0; n < kMaxTerms; ++n) {
        const double A = mixture.a + j;
        const double tailTerm = weight * tail;
        const double slopeTerm = weight * (A * step);
        sum.tail += tailTerm;
        sum.slope += slopeTerm;
        if (j > end && tailTerm <= kNegligible * sum.tail && slopeTerm <= kNegligible * sum.slope) {
            return unscaled(sum);
        }
        tail += step;
        step *= x * ((total + j) / (A + 1.0));
        j += 1.0;
        weight *= mixture.mean / j;
    }
    sum.isReliable = false;
    return sum;
}

/// The last index that matters: a Poisson distribution with this mean has fallen to kNegligible of
/// its peak there.
double last_index(double mode) {
    constexpr double reach = 44.0;  // -ln kNegligible
    if (mode > 100.0) {
        return std::ceil(mode + reach / 3.0 + std::sqrt(reach * reach / 9.0 + 2.0 * reach * mode));
    }
    double j = std::floor(mode);
    for (double next = mode / (j + 1.0); next > kNegligible; next *= mode / (j + 1.0)) {
        j += 1.0;
    }
    return j;
}

Sum sum_downward(const Mixture& mixture) {
    const double x = mixture.x();
    const double total = mixture.a + mixture.b;
    const double end = std::min(mixture.mode, mixture.mean);
    double j = last_index(mixture.mode);
    double weight = kScale * poisson_mass(j, mixture.mean);
    auto [step, tail, isReliable] = start_at(mixture, mixture.a + j, false);
    Sum sum{0.0, 0.0, isReliable};
    for (int n = 0; n < kMaxTerms; ++n) {
        const double A = mixture.a + j;
        const double tailTerm = weight * tail;
        const double slopeTerm = weight * (A * step);
        sum.tail += tailTerm;
        sum.slope += slopeTerm;
        const bool isNegligible =
            tailTerm <= kNegligible * sum.tail && slopeTerm <= kNegligible * sum.slope;
        if (j == 0.0 || (j < end && isNegligible)) {
            return unscaled(sum);
        }
        weight = weight * j / mixture.mean;
        j -= 1.0;
        step = step * A / (x * (total + j));
        tail += step;
    }
    sum.isReliable = false;
    return sum;
}

/// mean / w with the saddle point w; see the top of this file.
double mode_of(const BetaPoint& point, double a, double b, double mean) {
    const double x = point.x.hi;
    const double scale = x * (a + b);
    const double slope = a - mean * x;
    const double root = std::sqrt(slope * slope + 4.0 * scale * mean);
    return slope > 0.0 ? 2.0 * scale * (mean / (slope + root)) : 0.5 * (root - slope);
}

/// Chernoff's bound: whether no double is left of the upper tail. Without it a far point would have
/// as many terms as its distance.
bool is_upper_tail_lost(const Mixture& mixture) {
    constexpr double lost = -760.0;
    const double w = mixture.mean / mixture.mode;
    const double rest = mixture.y() + mixture.x() * (1.0 - w);  // 1 - x w
    const double share = mixture.y() / rest;
    const double logShare =
        share < 0.5 ? std::log(share) : std::log1p(-mixture.x() * ((1.0 - w) / rest));
    return mixture.mode - mixture.mean - mixture.a * std::log(w) + mixture.b * logShare < lost;
}

}  // namespace

BetaPoint gamma_point(double y) { return BetaPoint::from_ratio(DoubleDouble{kEndless, 0.0} / y); }

MixtureTails mixture_tails(const BetaPoint& point, double a, double b, double mean) {
    const Mixture mixture{point, a, b, mean, mode_of(point, a, b, mean)};
    const bool upperFirst = mixture.mode > mean;
    if (upperFirst && is_upper_tail_lost(mixture)) {
        return {1.0, 0.0, 0.0, true};
    }
    Sum first = upperFirst ? sum_upward(mixture) : sum_downward(mixture);
    Sum second{1.0 - std::min(first.tail, 1.0), first.slope, first.isReliable};
    if (first.tail > kComplementLimit) {
        second = upperFirst ? sum_downward(mixture) : sum_upward(mixture);
        first.tail = 1.0 - std::min(second.tail, 1.0);
    }
    const Sum& lower = upperFirst ? second : first;
    const Sum& upper = upperFirst ? first : second;
    return {lower.tail, upper.tail, second.slope, first.isReliable && second.isReliable};
}

}  // namespace vela::kernels
