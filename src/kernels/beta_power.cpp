// x^a y^b / B(a, b) without a difference of log-gamma values (Loader 2000). With u = x (a + b) / a
// and v = y (a + b) / b it is
//
//   sqrt(a b / (2 pi (a + b))) Gs(a + b) / (Gs(a) Gs(b)) exp(-a d(u) - b d(v)),  d(u) = u - 1 - ln
//   u,
//
// where Gs is the gamma function over Stirling's formula and both parts of the exponent are
// positive and known in two doubles. Where a + b < 12 there is nothing to cancel, and powers and
// gamma functions are multiplied as they stand.

#include "kernels/beta_power.hpp"

#include "kernels/beta_gamma.hpp"
#include "kernels/beta_log.hpp"
#include "kernels/limits.hpp"

#include <cmath>
#include <limits>

namespace vela::kernels {
namespace {

constexpr double kTwoPi = 6.283185307179586;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kDirectTotal = 12.0;    // a + b below which gamma functions are used as they are
constexpr double kNoDoubleLeft = 745.0;  // exp(-this) is 0
constexpr double kNearEnd = 1e-20;       // 1 - x is 1 for any x below

/// a (d - ln(1 + d)) for d = w / a > -1, where 1 + d = u is also given in case d is near -1.
DoubleDouble deviance_part(double a, DoubleDouble w, DoubleDouble coordinate, DoubleDouble total) {
    const DoubleDouble d = w / a;
    if (d.hi >= -0.5) {
        return log1p_deficit(d) * a;
    }
    return (d - log_two_doubles(coordinate * total / a)) * a;
}

double exp_minus(DoubleDouble e) {
    return e.hi > kNoDoubleLeft ? 0.0 : std::exp(-e.hi) * (1.0 - e.lo);
}

double quotient_or_infinity(double numerator, double denominator) {
    return denominator < 1.0 && numerator > denominator * kLargestDouble ? kInfinity
                                                                         : numerator / denominator;
}

/// scale s^(shape - 1)
double end_density(double s, double shape, double scale) {
    // shape - 1 is exact from 1 on; below, its rounding would be felt
    return shape >= 1.0 ? scale * std::pow(s, shape - 1.0)
                        : quotient_or_infinity(scale * std::pow(s, shape), s);
}

}  // namespace

BetaPower::BetaPower(double a, double b) : m_a(a), m_b(b), m_total(two_sum(a, b)) {
    const double reduced = std::fmin(a, b) / m_total.hi * std::fmax(a, b);
    m_direct = m_total.hi < kDirectTotal;
    if (m_direct) {
        // Gamma(1 + a) / a for Gamma(a); the logarithm stands for the digamma function, which the
        // part of a + b that no double holds is multiplied with
        m_scale = reduced * (gamma_plus_one(m_total.hi) / (gamma_plus_one(a) * gamma_plus_one(b))) *
                  (1.0 + m_total.lo * std::log(m_total.hi + 0.5));
        return;
    }
    const ScaledGamma scaledA = scaled_gamma(a);
    const ScaledGamma scaledB = scaled_gamma(b);
    m_scale = std::sqrt(reduced / kTwoPi) / (scaledA.factor * scaledB.factor);
    m_logScale = scaled_gamma(m_total.hi).logPart - (scaledA.logPart + scaledB.logPart);
}

DoubleDouble BetaPower::exponent(const BetaPoint& point) const {
    const DoubleDouble margin = point.y * m_a - point.x * m_b;
    return deviance_part(m_a, -margin, point.x, m_total) +
           deviance_part(m_b, margin, point.y, m_total) - m_logScale;
}

double BetaPower::at(const BetaPoint& point) const {
    if (m_direct) {
        return std::pow(point.x.hi, m_a) * std::pow(point.y.hi, m_b) * m_scale;
    }
    return exp_minus(exponent(point)) * m_scale;
}

double BetaPower::direct_density(const BetaPoint& point) const {
    const double x = point.x.hi;
    const double y = point.y.hi;
    if (x < kNearEnd) {
        return end_density(x, m_a, m_scale);
    }
    if (y < kNearEnd) {
        return end_density(y, m_b, m_scale);
    }
    return std::pow(x, m_a) * std::pow(y, m_b) * m_scale / (x * y);
}

double BetaPower::density(const BetaPoint& point) const {
    if (m_direct) {
        return direct_density(point);
    }
    DoubleDouble e = exponent(point);
    constexpr double unlikely = 100.0;
    if (e.hi < unlikely) {
        return quotient_or_infinity(exp_minus(e) * m_scale, point.x.hi * point.y.hi);
    }
    // next to an end the power may vanish where the density does not
    e = e + log_two_doubles(point.x) + log_two_doubles(point.y);
    return exp_minus(e) * m_scale;
}

double BetaPower::log_beta() const {
    if (m_direct) {
        return -std::log(m_scale);
    }
    const double logMeans = m_a * std::log1p(m_b / m_a) + m_b * std::log1p(m_a / m_b);
    return -(std::log(m_scale) + m_logScale.hi + logMeans);
}

double BetaPower::peak() const {
    if (m_direct) {
        return std::pow(m_a / m_total.hi, m_a) * std::pow(m_b / m_total.hi, m_b) * m_scale;
    }
    return std::exp(m_logScale.hi) * m_scale;
}

}  // namespace vela::kernels
