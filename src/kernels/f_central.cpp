// The central F distribution through the incomplete beta function. The kernel is given the ratio
// r = df1 x / df2 in two doubles: as one double, u = r / (1 + r) would have lost eight digits of a
// tail at 1e8 degrees of freedom.
//
// Infinite degrees of freedom are replaced by 1e60: the distribution is then the chi-square limit
// to the last bit, and the incomplete beta function keeps its accuracy there. Where r leaves
// 2^-480..2^480 the tail next to that end is a power of r, by which it is carried over from the
// bound.

#include "kernels/f_central.hpp"

#include "conventions/error_channel.hpp"
#include "kernels/beta_quantile.hpp"
#include "kernels/limits.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vela::kernels {
namespace {

using conventions::enter_kernel;
using conventions::ErrorLevel;
using conventions::kArgumentTooLarge;
using conventions::kInvalidArgument;
using conventions::kNoConvergence;
using conventions::kNoError;
using conventions::raise_level;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kAsGoodAsInfinite = 1e60;
constexpr double kSmallestDf = 2e-150;
constexpr int kExponentBound = 480;
constexpr double kLn2 = 0.6931471805599453;

int level_of(double df1, double df2) {
    if (df1 != df1 || df2 != df2 || df1 <= 0.0 || df2 <= 0.0) {
        return kInvalidArgument;
    }
    return std::min(df1, df2) < kSmallestDf ? kArgumentTooLarge : kNoError;
}

/// For degrees of freedom that may be NaN, which no ordered comparison may see.
double finite_df(double df) {
    return std::isgreater(df, kAsGoodAsInfinite) ? kAsGoodAsInfinite : df;
}

/// Half the degrees of freedom as a shape; any shape for invalid ones.
double shape_of(double df, int level) { return level == kNoError ? 0.5 * df : 1.0; }

/// a b, infinite where that exceeds the range of doubles; neither is negative.
double product_or_infinity(double a, double b) {
    return a > 1.0 && b > kLargestDouble / a ? kInfinity : a * b;
}

double quotient_or_infinity(double a, double b) {
    return b < 1.0 && a > b * kLargestDouble ? kInfinity : a / b;
}

bool is_ordinary(double x) { return std::isgreater(x, 1e-60) && std::isless(x, 1e61); }

}  // namespace

/// r = df1 x / df2 within bounds, and ln of what was cut off: negative below, positive above.
struct CentralF::Place {
    DoubleDouble ratio;
    double logExcess;
};

CentralF::CentralF(double df1, double df2)
    : m_df1(finite_df(df1)),
      m_df2(finite_df(df2)),
      m_isPoint(df1 == kInfinity && df2 == kInfinity),
      m_level(level_of(df1, df2)),
      m_isOrdinary(is_ordinary(m_df1) && is_ordinary(m_df2)),
      m_shapes(shape_of(m_df2, m_level), shape_of(m_df1, m_level)) {}

CentralF::Place CentralF::place(double x) const {
    if (is_ordinary(x) && m_isOrdinary) {
        const DoubleDouble ratio = two_product(m_df1, x) / m_df2;
        if (ratio.hi > 1e-140 && ratio.hi < 1e140) {
            return {ratio, 0.0};
        }
    }
    int xExponent = 0;
    int exponent1 = 0;
    int exponent2 = 0;
    const double xFraction = std::frexp(x, &xExponent);
    const double fraction1 = std::frexp(m_df1, &exponent1);
    const double fraction2 = std::frexp(m_df2, &exponent2);
    const DoubleDouble fraction = two_product(xFraction, fraction1) / fraction2;
    const int exponent = xExponent + exponent1 - exponent2;
    const int bounded = std::clamp(exponent, -kExponentBound, kExponentBound);
    return {{std::ldexp(fraction.hi, bounded), std::ldexp(fraction.lo, bounded)},
            (exponent - bounded) * kLn2};
}

void CentralF::point_tails(double x, double* lower, double* upper) const {
    // The ratio grows with F, and x of the beta distribution falls.
    double* const betaLower = upper;
    double* const betaUpper = lower;
    if (is_ordinary(x) && m_isOrdinary) {
        if (const auto value = m_shapes.power().value_at_f(x)) {
            m_shapes.tails(*value, betaLower, betaUpper);
            return;
        }
    }
    const Place at = place(x);
    m_shapes.tails(BetaPoint::from_ratio(at.ratio), betaLower, betaUpper);
    if (at.logExcess == 0.0 || conventions::kernel_failed()) {
        return;
    }
    const bool isBelow = at.logExcess < 0.0;
    double* const tail = isBelow ? lower : upper;
    double* const other = isBelow ? upper : lower;
    const double exponent = -std::fabs(at.logExcess) * 0.5 * (isBelow ? m_df1 : m_df2);
    *other -= *tail * std::expm1(exponent);
    *tail *= std::exp(exponent);
}

void CentralF::tails(double x, double* lower, double* upper) const {
    enter_kernel("f_df");
    *lower = *upper = kLargestDouble;
    if (x != x || m_level != kNoError) {
        raise_level(x != x ? kInvalidArgument : static_cast<ErrorLevel>(m_level), "f_df");
        return;
    }
    if (m_isPoint || x <= 0.0 || x == kInfinity) {
        const bool isReached = m_isPoint ? x >= 1.0 : x > 0.0;
        *lower = isReached ? 1.0 : 0.0;
        *upper = isReached ? 0.0 : 1.0;
        return;
    }
    point_tails(x, lower, upper);
    if (conventions::kernel_failed()) {
        *lower = *upper = kLargestDouble;
    }
}

double CentralF::density_at_zero() const {
    if (m_df1 == 2.0) {
        return 1.0;
    }
    return m_df1 < 2.0 ? kInfinity : 0.0;
}

/// With r the beta variable in odds: f(x) = beta density * (1 / (1 + r))^2 * df1 / df2.
double CentralF::inner_density(double x) const {
    const Place at = place(x);
    const BetaPoint point = BetaPoint::from_ratio(at.ratio);
    const double beta = m_shapes.power().density(point);
    const double stretch = quotient_or_infinity(m_df1, m_df2) * point.x.hi * point.x.hi;
    const double density = beta == kInfinity ? kInfinity : product_or_infinity(stretch, beta);
    if (at.logExcess == 0.0 || density == 0.0 || density == kInfinity) {
        return density;
    }
    const double power = at.logExcess < 0.0 ? 0.5 * m_df1 - 1.0 : -0.5 * m_df2 - 1.0;
    const double logarithm = std::log(density) + power * at.logExcess;
    return logarithm > kLogOverflow ? kInfinity : std::exp(logarithm);
}

double CentralF::density(double x) const {
    enter_kernel("f_density");
    if (x != x || m_level != kNoError) {
        raise_level(x != x ? kInvalidArgument : static_cast<ErrorLevel>(m_level), "f_density");
        return kLargestDouble;
    }
    if (x < 0.0 || x == kInfinity) {
        return 0.0;
    }
    if (m_isPoint) {
        return x == 1.0 ? kInfinity : 0.0;
    }
    return x == 0.0 ? density_at_zero() : inner_density(x);
}

void f_df(double x, double df1, double df2, double* lower, double* upper) {
    CentralF(df1, df2).tails(x, lower, upper);
}

double f_density(double x, double df1, double df2) { return CentralF(df1, df2).density(x); }

namespace {

/// F from the odds n1 F / n2; infinite where it exceeds the range of a double.
double quantile_from(const BetaQuantile::Odds& found, double n1, double n2) {
    if (found.logRatio != 0.0) {  // the ratio may have lost digits that the quantile needs
        const double logOdds = found.isInverse ? -found.logRatio : found.logRatio;
        const double logarithm = logOdds + (std::log(n2) - std::log(n1));
        return logarithm > kLogOverflow ? kInfinity : std::exp(logarithm);
    }
    const double stretch = quotient_or_infinity(n2, n1);
    const bool isRatioInfinite = found.outcome == QuantileOutcome::kTooLarge;
    if (found.isInverse) {
        return isRatioInfinite ? 0.0 : quotient_or_infinity(stretch, found.ratio);
    }
    return isRatioInfinite ? kInfinity : product_or_infinity(stretch, found.ratio);
}

}  // namespace

void inv_f_df(double p, double df1, double df2, double* x) {
    enter_kernel("inv_f_df");
    *x = -kLargestDouble;
    const int level = level_of(df1, df2);
    if (p != p || p < 0.0 || p >= 1.0 || level != kNoError) {
        const bool isP = p != p || p < 0.0 || p >= 1.0;
        raise_level(isP ? kInvalidArgument : static_cast<ErrorLevel>(level), "inv_f_df");
        return;
    }
    if (p == 0.0 || (df1 == kInfinity && df2 == kInfinity)) {
        *x = p == 0.0 ? 0.0 : 1.0;
        return;
    }
    const double n1 = finite_df(df1);
    const double n2 = finite_df(df2);
    const auto found = BetaQuantile(0.5 * n1, 0.5 * n2).odds(p, 1.0 - p);
    if (found.outcome == QuantileOutcome::kNotFound) {
        raise_level(kNoConvergence, "inv_f_df");
        return;
    }
    const double result = quantile_from(found, n1, n2);
    if (result == kInfinity) {
        raise_level(kArgumentTooLarge, "inv_f_df");
        return;
    }
    *x = result;
}

}  // namespace vela::kernels
