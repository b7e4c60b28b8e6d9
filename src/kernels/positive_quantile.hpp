#ifndef VELA_KERNELS_POSITIVE_QUANTILE_HPP
#define VELA_KERNELS_POSITIVE_QUANTILE_HPP

#include <limits>

/// The one search for quantiles of continuous distributions on the positive half-line (a beta
/// quantile is sought as the odds x / (1 - x)). It solves ln tail = ln p in ln x, where both the
/// bulk and power-law ends are nearly straight, by Newton's method, or by its extension to
/// the fourth order where the caller knows the bend, inside a bracket that bisection shrinks where
/// a step leaves it or gains nothing.
namespace vela::kernels {

/// A tail probability at x and how it goes on from there. A tail that is not positive, or NaN,
/// counts as too small.
struct TailAndSlope {
    double tail;
    double slope;  // x times the density: |d tail / d ln x|
    /// d ln slope / d ln x, which is 1 + d ln density / d ln x and often a short formula, and its
    /// own derivative by ln x. NaN: not known.
    double bend = std::numeric_limits<double>::quiet_NaN();
    double bendSlope = 0.0;
};

enum class QuantileOutcome {
    kFound,     // *x holds the quantile; 0 where it lies below the smallest double
    kTooLarge,  // it lies beyond the largest double
    kNotFound   // the tail jumps over p or did not follow its slope: a kernel failed on the way
};

class PositiveQuantileSearch {
public:
    /// For the x with P(X > x) = p, or P(X <= x) = p; 0 < p < 1, at best p <= 1/2. `start` is any
    /// guess.
    PositiveQuantileSearch(double p, bool isUpper, double start);

    double x() const { return m_x; }
    bool is_final() const { return m_isFinal; }

    /// One step from x(), where the tail and slope are these.
    void advance(const TailAndSlope& at);

    QuantileOutcome outcome() const { return m_isFinal ? m_outcome : QuantileOutcome::kNotFound; }

private:
    double log_excess(double tail) const;
    void step(const TailAndSlope& at, double excess);
    void bisect();
    void finish(double x, QuantileOutcome outcome);

    double m_p;
    bool m_isUpper;
    double m_x;
    double m_low = std::numeric_limits<double>::denorm_min();  // the root lies between
    double m_high = std::numeric_limits<double>::max();
    double m_smallestExcess = std::numeric_limits<double>::max();  // |ln tail - ln p| so far
    bool m_isFinal = false;
    QuantileOutcome m_outcome = QuantileOutcome::kFound;
};

/// Runs the search: evaluate(x) gives the tail that is solved for.
template <class Evaluate>
QuantileOutcome find_positive_quantile(double p, bool isUpper, double start, Evaluate evaluate,
                                       double* x) {
    constexpr int maxSteps = 300;  // 1 to 3 are usual; pure bisection needs about 65
    PositiveQuantileSearch search(p, isUpper, start);
    for (int step = 0; step < maxSteps && !search.is_final(); ++step) {
        search.advance(evaluate(search.x()));
    }
    *x = search.x();
    return search.outcome();
}

}  // namespace vela::kernels

#endif
