// x^a y^b / B(a, b) without a difference of log-gamma values (Loader 2000). With u = x (a + b) / a
// and v = y (a + b) / b it is
//
//   sqrt(a b / (2 pi (a + b))) Gs(a + b) / (Gs(a) Gs(b)) u^a v^b,
//
// where Gs is the gamma function over Stirling's formula. Two ways to the powers: as they stand,
// with the part of u and v that no double holds to first order, or, at half the speed, as
// exp(-a d(u) - b d(v)), d(u) = u - 1 - ln u, both parts of which are positive and known in two
// doubles. The second way serves shapes or points where the first would leave the doubles, and
// large shapes near the mean, where others want the exponent. Where a + b is small there is nothing
// to cancel, and x^a y^b is multiplied with gamma functions.

#include "kernels/beta_power.hpp"

#include "kernels/beta_gamma.hpp"
#include "kernels/beta_log.hpp"
#include "kernels/limits.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vela::kernels {
namespace {

constexpr double kTwoPi = 6.283185307179586;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kDirectTotal = 12.0;  // a + b below which gamma functions are used as they are
constexpr double kMostHalves = 120.0;  // twice the shapes for which both are cheap beyond that
constexpr double kPowersTotal = 1e6;   // and below which powers are
constexpr double kFarthest = 650.0;  // margin beyond which a power may: neither exceeds e^|margin|
constexpr double kNearEnd = 1e-20;   // 1 - x is 1 for any x below

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

/// x^shape for 0 < x <= 1. Whole and half shapes, as counts and degrees of freedom give, take
/// products.
double power(double x, double shape) {
    const double halves = 2.0 * shape;
    const auto count = static_cast<unsigned>(std::min(halves, kMostHalves));
    if (count != halves) {
        return std::pow(x, shape);
    }
    double result = count % 2 != 0 ? std::sqrt(x) : 1.0;
    double square = x;
    for (unsigned n = count / 2; n != 0; n /= 2) {
        result *= n % 2 != 0 ? square : 1.0;
        square *= square;
    }
    return result;
}

}  // namespace

BetaPoint BetaPoint::from_doubles(double x, double y) {
    return x <= y ? BetaPoint{{x, 0.0}, two_sum(1.0, -x)} : BetaPoint{two_sum(1.0, -y), {y, 0.0}};
}

BetaPoint BetaPoint::from_ratio(DoubleDouble ratio) {
    const DoubleDouble sum = DoubleDouble{1.0, 0.0} + ratio;
    const double quotient = 1.0 / sum.hi;
    const DoubleDouble back = two_product(quotient, sum.hi);
    const double rest = ((1.0 - back.hi) - back.lo) - quotient * sum.lo;
    const DoubleDouble x{quotient, quotient * rest};
    return {x, ratio * x};
}

BetaPower::BetaPower(double a, double b) : m_a(a), m_b(b), m_total(two_sum(a, b)) {
    // all of it symmetric in a and b to the last bit: exchanged arguments give exchanged tails
    const double reduced = std::min(a, b) / m_total.hi * std::max(a, b);
    m_isDirect = m_total.hi < kDirectTotal ||
                 (is_tabulated_gamma(m_total.hi) && is_tabulated_gamma(a) && is_tabulated_gamma(b));
    if (m_isDirect) {
        // Gamma(1 + a) / a for Gamma(a)
        m_scale = reduced * (gamma_plus_one(m_total.hi) / (gamma_plus_one(a) * gamma_plus_one(b)));
        if (m_total.lo != 0.0) {
            // the logarithm stands for the digamma function, which the part of a + b that no double
            // holds is multiplied with
            m_scale *= 1.0 + m_total.lo * std::log(m_total.hi + 0.5);
        }
        return;
    }
    const ScaledGamma scaledA = scaled_gamma(a);
    const ScaledGamma scaledB = scaled_gamma(b);
    const double logGammas = scaled_gamma(m_total.hi).logPart - (scaledA.logPart + scaledB.logPart);
    m_scale = std::sqrt(reduced / kTwoPi) / (scaledA.factor * scaledB.factor) * std::exp(logGammas);
    if (m_total.hi < kPowersTotal) {
        m_stretchX = m_total / a;
        m_stretchY = m_total / b;
    }
}

/// Whether the shapes are so large that near the mean their distribution is an expanded normal one,
/// and the point is at most about five standard deviations off.
bool BetaPower::is_near_mean(double margin) const {
    constexpr double large = 100.0;
    const double reduced = m_a / m_total.hi * m_b;  // the variance of the margin
    return reduced >= large && margin * (margin / reduced) <= 25.0;
}

/// What the lower doubles add to a ln u + b ln v.
double BetaPower::rest_of_logs(DoubleDouble u, DoubleDouble v) const {
    return (m_a * u.lo * v.hi + m_b * v.lo * u.hi) / (u.hi * v.hi);
}

/// u^a v^b; false where a power is not far inside the range of doubles.
bool BetaPower::stretched_powers(DoubleDouble u, DoubleDouble v, double* result) const {
    constexpr double smallest = 1e-290;
    const double first = std::pow(u.hi, m_a);
    const double second = std::pow(v.hi, m_b);
    *result = first * second * (1.0 + rest_of_logs(u, v));
    return std::min(first, second) > smallest;
}

namespace {

/// The deviance of a shape from its share of the total. A denormal product of the two would lose
/// digits, so that logarithms are added instead.
DoubleDouble share_deviance(double shape, DoubleDouble excess, DoubleDouble share,
                            DoubleDouble total) {
    constexpr double tiny = 1e-290;
    return share.hi > tiny
               ? deviance(shape, excess, share * total)
               : (excess / shape - log_two_doubles(share) - log_two_doubles(total / shape)) * shape;
}

}  // namespace

DoubleDouble BetaPower::deviance_at(const BetaPoint& point, DoubleDouble margin) const {
    return share_deviance(m_a, -margin, point.x, m_total) +
           share_deviance(m_b, margin, point.y, m_total);
}

BetaPower::Value BetaPower::value(const BetaPoint& point) const {
    const double x = point.x.hi;
    const double y = point.y.hi;
    if (m_isDirect) {
        const double powers = power(x, m_a) * power(y, m_b);
        return {x, y, powers * (1.0 + rest_of_logs(point.x, point.y)) * m_scale, m_a * y - m_b * x,
                kLargestDouble};
    }
    constexpr double smallest = 1e-290;
    const DoubleDouble margin = point.y * m_a - point.x * m_b;
    double powers = 0.0;
    const bool isNearMean = is_near_mean(margin.hi);
    if (m_total.hi < kPowersTotal && std::fabs(margin.hi) < kFarthest && !isNearMean &&
        std::min(x, y) > smallest &&
        stretched_powers(point.x * m_stretchX, point.y * m_stretchY, &powers)) {
        return {x, y, powers * m_scale, margin.hi, kLargestDouble};
    }
    const DoubleDouble e = deviance_at(point, margin);
    return {x, y, exp_minus(e) * m_scale, margin.hi, isNearMean ? e.hi : kLargestDouble};
}

std::optional<BetaPower::Value> BetaPower::value_at_f(double f) const {
    const DoubleDouble odds = two_product(m_b, f);  // y / x times a
    const DoubleDouble sum = DoubleDouble{m_a, 0.0} + odds;
    const double x = m_a / sum.hi;
    const double y = odds.hi / sum.hi;
    const double margin = m_b * x * (f - 1.0);
    if (m_isDirect) {
        const bool feelsRounding = m_total.hi >= kDirectTotal;
        const double rest =
            feelsRounding ? rest_of_logs(DoubleDouble{m_a, 0.0} / sum, odds / sum) : 0.0;
        return Value{x, y, power(x, m_a) * power(y, m_b) * (1.0 + rest) * m_scale, margin,
                     kLargestDouble};
    }
    if (m_total.hi >= kPowersTotal || std::fabs(margin) >= kFarthest || is_near_mean(margin)) {
        return std::nullopt;
    }
    double powers = 0.0;
    const DoubleDouble u = m_total / sum;
    if (!stretched_powers(u, u * f, &powers)) {
        return std::nullopt;
    }
    return Value{x, y, powers * m_scale, margin, kLargestDouble};
}

double BetaPower::density(const BetaPoint& point) const {
    const double x = point.x.hi;
    const double y = point.y.hi;
    if (m_isDirect && std::min(x, y) < kNearEnd) {
        return x < y ? end_density(x, m_a, m_scale) : end_density(y, m_b, m_scale);
    }
    const double power = at(point);
    constexpr double precise = 1e-200;
    if (m_isDirect || power > precise) {
        return quotient_or_infinity(power, x * y);
    }
    // next to an end the power may vanish where the density does not
    const DoubleDouble e = deviance_at(point, point.y * m_a - point.x * m_b) +
                           log_two_doubles(point.x) + log_two_doubles(point.y);
    return exp_minus(e) * m_scale;
}

double BetaPower::log_beta() const {
    const double logScale = std::log(m_scale);
    if (m_isDirect) {
        return -logScale;
    }
    return -(logScale + m_a * std::log1p(m_b / m_a) + m_b * std::log1p(m_a / m_b));
}

double BetaPower::peak_ratio() const {
    const double normal = std::sqrt(m_a / m_total.hi * m_b / kTwoPi);
    if (m_isDirect) {
        return std::pow(m_a / m_total.hi, m_a) * std::pow(m_b / m_total.hi, m_b) * m_scale / normal;
    }
    return m_scale / normal;
}

}  // namespace vela::kernels
