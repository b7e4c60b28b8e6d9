#include "kernels/positive_quantile.hpp"

#include <algorithm>
#include <cmath>

namespace vela::kernels {
namespace {

constexpr double kFlattest = 1e-8;        // of ln tail; a flatter one says nothing about the root
constexpr double kAcceptedError = 1e-14;  // estimated relative error in p after the last step
constexpr double kSmallestGain = 0.75;    // a step that leaves more of the excess is a bad one
constexpr double kLargestJump = 1e-6;     // excess that a tail may have on both sides of its root

}  // namespace

PositiveQuantileSearch::PositiveQuantileSearch(double p, bool isUpper, double start)
    : m_p(p), m_isUpper(isUpper), m_x(start) {
    if (!(std::isgreater(start, m_low) && std::isless(start, m_high))) {
        m_x = 1.0;
    }
}

double PositiveQuantileSearch::log_excess(double tail) const {
    constexpr double smallestDivisor = 1e-300;  // a quotient by less might overflow
    return m_p >= smallestDivisor ? std::log(tail / m_p) : std::log(tail) - std::log(m_p);
}

void PositiveQuantileSearch::advance(const TailAndSlope& at) {
    const bool isUsable = std::isgreater(at.tail, 0.0);
    const double excess = isUsable ? log_excess(at.tail) : -1.0;
    const bool isRootAbove = (excess > 0.0) == m_isUpper;
    (isRootAbove ? m_low : m_high) = m_x;
    const double magnitude = std::fabs(excess);
    const bool hasGained = isUsable && magnitude <= kSmallestGain * m_smallestExcess;
    if (isUsable) {
        m_smallestExcess = std::min(m_smallestExcess, magnitude);
    }
    if (hasGained && std::isgreater(at.slope, kFlattest * at.tail)) {
        step(at, excess);
    } else {
        bisect();
    }
}

void PositiveQuantileSearch::step(const TailAndSlope& at, double excess) {
    const double rate = (m_isUpper ? -at.slope : at.slope) / at.tail;  // d ln tail / d ln x
    const double magnitude = std::fabs(excess);
    double dw = -excess / rate;
    double error = magnitude * magnitude;  // relative, in p, after the step
    if (at.bend == at.bend) {
        // The series that inverts ln tail = ln p, from its derivatives by ln x.
        const double half = 0.5 * dw * (at.bend - rate);
        const double sixth =
            dw * dw * ((at.bend - rate) * (at.bend - 2.0 * rate) + at.bendSlope) / 6.0;
        const double size = magnitude + std::fabs(half) + std::sqrt(std::fabs(sixth));
        error = magnitude * size * size * size;
        dw *= size < 0.5 ? 1.0 - half + 2.0 * half * half - sixth
                         : 1.0 / (1.0 + std::clamp(half, -0.5, 0.5));
    }
    constexpr double longest = 40.0;  // keeps the product below from overflowing
    const double next = std::fabs(dw) < longest && m_x < 1e290 ? m_x * std::exp(dw) : 0.0;
    if (!(next >= m_low && next <= m_high)) {
        bisect();
    } else if (error < kAcceptedError) {
        finish(next, QuantileOutcome::kFound);
    } else {
        m_x = next;
    }
}

void PositiveQuantileSearch::bisect() {
    const double middle = std::sqrt(m_low) * std::sqrt(m_high);
    if (middle > m_low && middle < m_high && m_high - m_low > 1e-15 * m_high) {
        m_x = middle;
    } else if (m_high <= 2.0 * std::numeric_limits<double>::denorm_min()) {
        finish(0.0, QuantileOutcome::kFound);
    } else if (m_low >= 0.99 * std::numeric_limits<double>::max()) {
        finish(m_low, QuantileOutcome::kTooLarge);
    } else {
        finish(m_x, m_smallestExcess < kLargestJump ? QuantileOutcome::kFound
                                                    : QuantileOutcome::kNotFound);
    }
}

void PositiveQuantileSearch::finish(double x, QuantileOutcome outcome) {
    m_x = x;
    m_outcome = outcome;
    m_isFinal = true;
}

}  // namespace vela::kernels
