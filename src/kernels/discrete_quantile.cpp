#include "kernels/discrete_quantile.hpp"

#include "kernels/normal_start.hpp"

#include <algorithm>

namespace vela::kernels {
namespace {

constexpr double kShortfall = 1e-13;  // relative to the smaller tail

}  // namespace

DiscreteQuantileSearch::DiscreteQuantileSearch(double p, const DiscreteShape& shape)
    : m_p(p), m_low(shape.smallest - 1.0), m_high(shape.largest), m_isBounded(shape.isBounded) {
    m_k = start(shape);
    m_step = std::max(1.0, 4e-16 * std::fabs(m_k));
}

double DiscreteQuantileSearch::start(const DiscreteShape& shape) const {
    const double z = m_p > 0.5 ? normal_start(1.0 - m_p) : -normal_start(m_p);
    const double k = shape.mean + shape.sd * (z + shape.skewness * (z * z - 1.0) / 6.0);
    return std::clamp(std::floor(k + 0.5), shape.smallest, shape.largest);
}

bool DiscreteQuantileSearch::reaches_p(double lower, double upper) const {
    if (lower <= upper) {
        return lower >= m_p - kShortfall * m_p;
    }
    const double target = 1.0 - m_p;
    return upper <= target + kShortfall * target + kHalfUlpOfOne;
}

bool DiscreteQuantileSearch::is_near(double lower, double upper) const {
    constexpr double factor = 30.0;
    const double target = m_p <= 0.5 ? m_p : 1.0 - m_p;
    const double tail = m_p <= 0.5 ? lower : upper;
    return target > 1e-280 && tail < factor * target && target < factor * tail;
}

void DiscreteQuantileSearch::advance(double lower, double upper) {
    if (reaches_p(lower, upper)) {
        m_high = m_k;
        m_hasHigh = true;
    } else {
        m_low = m_k;
        m_hasLow = true;
    }
    const double candidate = next();
    if (candidate > m_low && candidate < m_high) {
        m_k = candidate;
        return;
    }
    m_k = m_high;  // nothing is left between the ends
    m_isFinal = m_hasHigh || m_isBounded;
    if (!m_isFinal && m_low >= m_high) {
        m_isFinal = m_isTooLarge = true;
    }
}

double DiscreteQuantileSearch::middle() const {
    const bool isWide = m_low >= -1.0 && m_high > 1e3 && m_high / 16.0 > m_low;
    return std::floor(isWide ? std::sqrt(std::max(m_low, 1.0)) * std::sqrt(m_high)
                             : m_low + 0.5 * (m_high - m_low));
}

/// The next point to look at, strictly between the ends if there is one.
double DiscreteQuantileSearch::next() {
    if (m_hasLow && m_hasHigh) {
        return middle();
    }
    const double candidate = m_hasHigh ? m_high - m_step : m_low + m_step;
    m_step = std::min(2.0 * m_step, 1e300);
    return candidate > m_low && candidate < m_high ? candidate : middle();
}

}  // namespace vela::kernels
