#ifndef VELA_KERNELS_DISCRETE_QUANTILE_HPP
#define VELA_KERNELS_DISCRETE_QUANTILE_HPP

#include "conventions/error_channel.hpp"
#include "kernels/limits.hpp"

#include <cmath>
#include <cstddef>

/// The one search for quantiles of discrete distributions: the smallest whole k with
/// P(X <= k) >= p. A shortfall of up to 1e-13 counts as reached, relative to p or, where the upper
/// tail is the smaller one, to 1 - p; there half an ulp of 1 is added. So the rounding of a
/// cumulative probability never moves its own quantile to the next support point, and p next to 1
/// still tells apart what a double can.
///
/// It starts from the first terms of the Cornish-Fisher expansion (Abramowitz & Stegun 1964,
/// 26.2.49), brackets the answer with steps that double, and halves the bracket: on a logarithmic
/// scale where its ends differ by orders of magnitude.
namespace vela::kernels {

/// What a search knows of its distribution.
struct DiscreteShape {
    double mean;
    double sd;  // >= 0
    double skewness;
    double smallest;  // of the support
    double largest;   // of the support, or the largest count that the tails can be asked for
    bool isBounded;   // whether the support ends at `largest`
};

class DiscreteQuantileSearch {
public:
    /// 0 < p < 1.
    DiscreteQuantileSearch(double p, const DiscreteShape& shape);

    double k() const { return m_k; }
    bool is_final() const { return m_isFinal; }
    bool is_too_large() const { return m_isTooLarge; }

    /// One step from k(), where the tails are these.
    void advance(double lower, double upper);

    /// Whether the tail at k() is so close to p that the outcome is a few steps away.
    bool is_near(double lower, double upper) const;

    /// Walks from k(), where the tails are these, by adding masses. False, and nothing changed,
    /// where the outcome is too far, or p so close to a step that the walk's rounding could decide.
    template <class Family>
    bool walk(const Family& family, double lower, double upper);

private:
    double start(const DiscreteShape& shape) const;
    bool reaches_p(double lower, double upper) const;
    double middle() const;
    double next();

    // What rounding a probability next to 1 may add to it.
    static constexpr double kHalfUlpOfOne = 0x1p-54;

    double m_p;
    double m_low;   // P(X <= m_low) falls short of p
    double m_high;  // P(X <= m_high) reaches p, as far as it has been looked at
    double m_k;
    double m_step;
    bool m_isBounded;
    bool m_hasLow = false;   // the end has been looked at
    bool m_hasHigh = false;  // likewise
    bool m_isFinal = false;
    bool m_isTooLarge = false;
};

template <class Family>
bool DiscreteQuantileSearch::walk(const Family& family, double lower, double upper) {
    constexpr int maxSteps = 12;
    const bool isLower = m_p <= 0.5;
    const double target = isLower ? m_p : 1.0 - m_p;
    const bool isReached = reaches_p(lower, upper);
    double tail = isLower ? lower : upper;
    double uncertainty =
        Family::precision * (tail + target) + (isLower ? 0.0 : 2.0 * kHalfUlpOfOne);
    double mass = family.mass(m_k);
    double k = m_k;
    for (int step = 0; step < maxSteps && k > m_low && k < m_high; ++step) {
        // downwards the mass at k leaves the lower tail, upwards the one at k + 1 enters it
        mass = isReached ? mass : mass / family.falling_ratio(k + 1.0);
        tail += isReached == isLower ? -mass : mass;
        uncertainty += Family::precision * mass;
        if (!(std::fabs(tail - target) > uncertainty)) {
            return false;
        }
        const bool isNextReached = (tail > target) == isLower;
        if (isNextReached != isReached) {
            m_k = isReached ? k : k + 1.0;
            m_isFinal = true;
            return true;
        }
        mass *= isReached ? family.falling_ratio(k) : 1.0;
        k += isReached ? -1.0 : 1.0;
    }
    return false;
}

/// The quantile kernel of the given name: family.tails(k, &lower, &upper) is asked for both tails,
/// and a failure that it reports ends the search. A family that also knows its masses, mass(k) and
/// falling_ratio(k) = P(X = k - 1) / P(X = k), and the relative `precision` that tails and masses
/// agree to, lets the search walk the last steps from one evaluation.
///
/// *k is the smallest support point for p = 0 and the largest for p = 1. Level 2 for p outside
/// [0, 1], and for p = 1 where the support is unbounded; level 3 where the quantile exceeds
/// shape.largest. Then *k is -DBL_MAX.
template <std::size_t size, class Family>
void find_discrete_quantile(const char (&name)[size], double p, const DiscreteShape& shape,
                            const Family& family, double* k) {
    *k = -kLargestDouble;
    if (!std::isgreaterequal(p, 0.0) || !std::islessequal(p, 1.0) ||
        (p == 1.0 && !shape.isBounded)) {
        conventions::raise_level(conventions::kInvalidArgument, name);
        return;
    }
    if (p == 0.0 || p == 1.0 || shape.smallest == shape.largest) {
        *k = p == 0.0 ? shape.smallest : shape.largest;
        return;
    }
    constexpr int maxSteps = 4000;  // 2 or 3 are usual; from end to end of the doubles about 2200
    DiscreteQuantileSearch search(p, shape);
    for (int step = 0; step < maxSteps && !search.is_final(); ++step) {
        double lower = 0.0;
        double upper = 0.0;
        family.tails(search.k(), &lower, &upper);
        if (conventions::kernel_failed()) {
            return;
        }
        if constexpr (requires { family.falling_ratio(1.0); }) {
            if (shape.sd > 0.01 && search.is_near(lower, upper) &&
                search.walk(family, lower, upper)) {
                break;
            }
        }
        search.advance(lower, upper);
    }
    conventions::enter_kernel(name);
    if (!search.is_final()) {
        conventions::raise_level(conventions::kNoConvergence, name);
    } else if (search.is_too_large()) {
        conventions::raise_level(conventions::kArgumentTooLarge, name);
    } else {
        *k = search.k();
    }
}

}  // namespace vela::kernels

#endif
