// Quantiles of the beta distribution. The smaller tail is made the lower one by exchanging the
// shapes, and ln I = ln p is solved for the logarithm of the odds x / (1 - x): next to 0 a straight
// line, next to 1 no digit of 1 - x is lost, and the slope of I is the power x^a y^b / B(a, b).
//
// Starts:
//   a = 1, b = 1,      closed forms, final
//   a = b = 1/2
//   x below e^-690     the power law x^a / (a B(a, b)) of the lower tail, final
//   x or a small       that power law with its next term
//   b small            the power law of the other tail, or that of the lower one with the factor
//                      (1 - x)^(b - 1) of the integrand
//   else               I = Phi(r + ln(E' / (k r)) / r), r^2 / 2 = E = the deviance, by Newton's
//                      method: the saddle-point approximation (Lugannani & Rice 1980 in the form of
//                      Barndorff-Nielsen 1986), good to a few percent of p everywhere
//
// From the start one evaluation of I is usually enough: the power's logarithm has derivatives that
// cost nothing, so that the distance in ln(x / y) over which the power integrates to p - I comes
// from its power series. Where that series is too short it gives the next point; where it is no
// use, the safeguarded search takes over.

#include "kernels/beta_quantile.hpp"

#include "conventions/error_channel.hpp"
#include "kernels/limits.hpp"
#include "kernels/normal_start.hpp"

#include <algorithm>
#include <cmath>

namespace vela::kernels {
namespace {

using conventions::enter_kernel;
using conventions::kArgumentTooLarge;
using conventions::kInvalidArgument;
using conventions::kNoConvergence;
using conventions::kNoError;
using conventions::raise_level;

constexpr double kSmallestShape = 1e-150;
constexpr double kLargestShape = 1e150;
constexpr double kMismatch = 1e-8;        // p + q further from 1 is a caller's mistake
constexpr double kSaddleShape = 0.3;      // from here on the saddle-point start serves
constexpr double kLogPowerLaw = -690.0;   // ln x below which only the leading term is left
constexpr double kLogLargest = 709.0;     // ln of nearly the largest
constexpr double kAcceptedError = 1e-14;  // of the tail, after the last step

int level_of_shapes(double a, double b) {
    if (a != a || b != b || a <= 0.0 || b <= 0.0) {
        return kInvalidArgument;
    }
    const bool inRange = std::min(a, b) >= kSmallestShape && std::max(a, b) <= kLargestShape;
    return inRange ? kNoError : kArgumentTooLarge;
}

/// The derivatives of the logarithm of x^a y^b in ln(x / y), from the first to the fifth.
struct LogPowerSeries {
    double first, second, third, fourth, fifth;

    LogPowerSeries(double a, double b, double x, double y)
        : first(a * y - b * x),
          second(-(a + b) * (x * y)),
          third(second * (y - x)),
          fourth(third * (y - x) - 2.0 * (x * y) * second),
          fifth((fourth - 6.0 * (x * y) * second) * (y - x)) {}

    /// The inverse of the length over which the power changes.
    double scale() const { return std::fabs(first) + std::sqrt(-second) + 1.0; }
};

struct Step {
    double change;  // of ln(x / y)
    double error;   // estimate of its relative error
};

/// Solves integral from 0 to t of exp(first u + second u^2 / 2 + ...) du = area by its power
/// series.
Step solve_area(const LogPowerSeries& log, double area) {
    // in t / area, and with the factor j that the recurrence of the exponential's series has
    const double h1 = log.first * area;
    const double h2 = log.second * area * area;
    const double h3 = log.third * area * area * area / 2.0;
    const double h4 = log.fourth * area * area * area * area / 6.0;
    const double h5 = log.fifth * area * area * area * area * area / 24.0;
    const double e1 = h1;
    const double e2 = (h1 * e1 + h2) / 2.0;
    const double e3 = (h1 * e2 + h2 * e1 + h3) * (1.0 / 3.0);
    const double e4 = (h1 * e3 + h2 * e2 + h3 * e1 + h4) / 4.0;
    const double e5 = (h1 * e4 + h2 * e3 + h3 * e2 + h4 * e1 + h5) / 5.0;
    const double e6 = (h1 * e5 + h2 * e4 + h3 * e3 + h4 * e2 + h5 * e1) * (1.0 / 6.0);
    double t = 1.0 - 0.5 * h1;
    for (int iteration = 0; iteration < 4; ++iteration) {
        const double t2 = t * t;
        const double t4 = t2 * t2;
        const double derivative =
            (1.0 + e1 * t) + t2 * (e2 + e3 * t) + t4 * (e4 + e5 * t + e6 * t2);
        const double value = (1.0 + e1 / 2.0 * t) + t2 * (e2 * (1.0 / 3.0) + e3 / 4.0 * t) +
                             t4 * (e4 / 5.0 + e5 * (1.0 / 6.0) * t + e6 * (1.0 / 7.0) * t2);
        const double change = (1.0 - value * t) / derivative;
        t += change;
        if (!(std::fabs(change) > 1e-8)) {  // Newton's method squares it
            break;
        }
    }
    const double power = t * t * t * t * t;
    return {area * t, (std::fabs(e5) * 0.1 + std::fabs(e6 * t)) * std::fabs(power)};
}

double log_probability(double p, double complement) {
    return p > 0.5 ? std::log1p(-complement) : std::log(p);
}

}  // namespace

BetaQuantile::BetaQuantile(double a, double b)
    : m_a(a),
      m_b(b),
      m_level(level_of_shapes(a, b)),
      m_shapes(m_level == kNoError ? a : 1.0, m_level == kNoError ? b : 1.0),
      m_total(m_shapes.a() + m_shapes.b()),
      m_logBeta(m_shapes.power().log_beta()),
      m_rootCurvature(std::sqrt(m_shapes.a() / m_total * m_shapes.b())),
      m_peakRatio(m_shapes.power().peak_ratio()) {}

/// x / y where a shape is 1 or both are 1/2; the largest double stands for all beyond.
bool BetaQuantile::closed_form(const Side& side, double* ratio) const {
    if (side.b == 1.0) {
        *ratio = 1.0 / std::expm1(-side.logP / side.a);
    } else if (side.a == 1.0) {
        const double logInverse = -std::log1p(-side.p) / side.b;
        *ratio = logInverse < kLogLargest ? std::expm1(logInverse) : kLargestDouble;
    } else if (side.a == 0.5 && side.b == 0.5) {
        constexpr double halfPi = 1.5707963267948966;
        const double root = std::tan(halfPi * side.p);
        *ratio = root * root;
    } else {
        return false;
    }
    return true;
}

/// From the leading term, ln x = logX, with the next term of its series.
double BetaQuantile::power_law_start(const Side& side, double logX) const {
    if (logX < kLogPowerLaw) {
        return logX;
    }
    const double x = std::exp(logX);
    const double bend = x * (side.b - 1.0) / (side.a + 1.0);
    const double corrected = std::min(x * std::exp(std::clamp(bend, -1.0, 1.0)), 0.9);
    return std::log(corrected / (1.0 - corrected));
}

/// For b < 1 and a point well away from the end 1: the power law with the factor (1 - x)^(b - 1) of
/// the integrand at its end, by fixed-point iteration.
double BetaQuantile::far_start(const Side& side) const {
    double logX = -1.0 / (1.0 + side.a);
    for (int step = 0; step < 4; ++step) {
        const double y = -std::expm1(logX);
        const double slope = side.a + (1.0 - side.b) * (1.0 - y) / y;
        const double next =
            (side.logP + m_logBeta + std::log(slope) + (1.0 - side.b) * std::log(y)) / side.a;
        logX = std::min(next, -0.1 / (1.0 + side.a));
    }
    return logX - std::log(-std::expm1(logX));
}

double BetaQuantile::start(const Side& side, double logX) const {
    constexpr double nearOne = -0.2;   // ln x above which the other end's power law is better
    constexpr double nearZero = -3.0;  // ln x, and ln of b x, below which this one beats the rest
    const bool isSaddle = std::min(side.a, side.b) >= kSaddleShape;
    const bool isPowerLaw = isSaddle ? logX + std::log(side.b + 1.0) < nearZero
                                     : side.a < kSaddleShape && logX < nearOne;
    if (isPowerLaw) {
        return power_law_start(side, logX);
    }
    if (side.b < kSaddleShape) {
        const double logY =
            (log_probability(side.q, side.p) + std::log(side.b) + m_logBeta) / side.b;
        constexpr double stillPower = -1.2;  // of ln(a y): beyond, y^b / (b B) is not the tail
        if (logY < nearOne && logY + std::log(side.a + 1.0) < stillPower) {
            return -power_law_start({side.b, side.a, side.q, 0.0, side.p}, logY);
        }
        return far_start(side);
    }
    return saddle_start(side);
}

/// A guess of ln(odds) - ln(odds at the mean) where the deviance is z^2 / 2: a parabola at the mean
/// that turns into a line of slope a far below it, on the way by an exponential where the mean is
/// near 1.
double BetaQuantile::deviance_start(const Side& side, double z) const {
    const double scaled = std::fabs(z) / m_rootCurvature;
    const double linear = 0.25 * z * z / side.a;
    if (side.a <= side.b) {
        return -(linear + std::sqrt(linear * linear + scaled * scaled));
    }
    return -std::max(2.0 * std::asinh(0.5 * scaled), 2.0 * linear);
}

double BetaQuantile::saddle_start(const Side& side) const {
    const double a = side.a;
    const double mean = a / m_total;
    const double third = (side.b - a) / m_total / (3.0 * m_rootCurvature);
    const double z = -normal_start(side.p);
    double d = deviance_start(side, z);
    double miss = 1.0;
    constexpr int maxSteps = 8;
    for (int step = 0; step < maxSteps && std::fabs(miss) > 0.03 && std::fabs(d) < kLogLargest;
         ++step) {
        const double growthOfOdds = std::expm1(d);
        const double growth = std::max(mean * growthOfOdds, -1.0 + 1e-16);
        const double deviance = std::max(m_total * std::log1p(growth) - a * d, 0.0);
        const double slope = m_rootCurvature * m_rootCurvature * growthOfOdds / (1.0 + growth);
        const double r = std::copysign(std::sqrt(2.0 * deviance), d);
        double root = r + third;
        double rate = m_rootCurvature;
        if (std::fabs(r) > 0.05 && slope != 0.0) {
            rate = slope / r;
            // the exact normalisation matters in the tail and is no part of the centre
            const double w = deviance / (1.0 + deviance);
            root = r + std::log(rate / (m_rootCurvature * (1.0 + w * (m_peakRatio - 1.0)))) / r;
        }
        miss = root - z;
        d -= miss / rate;
    }
    return std::log(mean / (side.b / m_total)) + d;
}

TailAndSlope BetaQuantile::lower_tail(double ratio, bool isExchanged) const {
    constexpr double large = 1e149;
    const BetaPoint inverse = ratio < large ? BetaPoint::from_ratio({ratio, 0.0})
                                            : BetaPoint{{1.0 / ratio, 0.0}, {1.0, -1.0 / ratio}};
    const BetaPoint point = isExchanged ? inverse : BetaPoint{inverse.y, inverse.x};
    double lower = 0.0;
    double upper = 0.0;
    double power = 0.0;
    m_shapes.tails_and_power(point, &lower, &upper, &power);
    const LogPowerSeries log(isExchanged ? m_b : m_a, isExchanged ? m_a : m_b, inverse.y.hi,
                             inverse.x.hi);
    return {isExchanged ? upper : lower, power, log.first, log.second};
}

BetaQuantile::Odds BetaQuantile::odds(double p, double q) const {
    const bool isExchanged = q < p;
    const Side side =
        isExchanged ? Side{m_b, m_a, q, std::log(q), p} : Side{m_a, m_b, p, std::log(p), q};
    const double logX = (side.logP + std::log(side.a) + m_logBeta) / side.a;
    if (logX < kLogPowerLaw) {
        return {std::exp(logX), isExchanged, QuantileOutcome::kFound, logX};
    }
    double ratio = 0.0;
    if (closed_form(side, &ratio)) {
        const bool isLargest = ratio == kLargestDouble;
        return {ratio, isExchanged,
                isLargest ? QuantileOutcome::kTooLarge : QuantileOutcome::kFound};
    }
    ratio = std::exp(std::clamp(start(side, logX), kLogPowerLaw, kLogLargest));
    if (polish(side, isExchanged, &ratio)) {
        return {ratio, isExchanged, QuantileOutcome::kFound};
    }
    const QuantileOutcome outcome = find_positive_quantile(
        side.p, false, ratio, [=, this](double r) { return lower_tail(r, isExchanged); }, &ratio);
    return {ratio, isExchanged, outcome};
}

bool BetaQuantile::polish(const Side& side, bool isExchanged, double* ratio) const {
    constexpr int maxSteps = 4;  // 1 or 2 are usual
    for (int step = 0; step < maxSteps; ++step) {
        const TailAndSlope at = lower_tail(*ratio, isExchanged);
        const LogPowerSeries log(side.a, side.b, *ratio / (1.0 + *ratio), 1.0 / (1.0 + *ratio));
        const double excess = at.tail - side.p;
        if (!std::isgreater(at.slope, 2.0 * std::fabs(excess) * log.scale())) {
            return false;
        }
        const Step change = solve_area(log, -excess / at.slope);
        *ratio += *ratio * std::expm1(change.change);
        // what the error of the step means to the tail
        if (change.error * std::fabs(excess) < kAcceptedError * side.p) {
            return true;
        }
    }
    return false;
}

void BetaQuantile::find(double p, double q, double* x, double* y) const {
    enter_kernel("inv_beta_df");
    *x = *y = -kLargestDouble;
    if (p != p || q != q || p < 0.0 || q < 0.0 || p > 1.0 || q > 1.0 ||
        std::fabs((p - 0.5) + (q - 0.5)) > kMismatch) {
        raise_level(kInvalidArgument, "inv_beta_df");
        return;
    }
    if (m_level != kNoError) {
        raise_level(static_cast<conventions::ErrorLevel>(m_level), "inv_beta_df");
        return;
    }
    if (p == 0.0 || q == 0.0) {
        *x = p == 0.0 ? 0.0 : 1.0;
        *y = p == 0.0 ? 1.0 : 0.0;
        return;
    }
    const Odds found = odds(p, q);
    if (found.outcome == QuantileOutcome::kNotFound) {
        raise_level(kNoConvergence, "inv_beta_df");
        return;
    }
    const bool isOne = found.outcome == QuantileOutcome::kTooLarge;
    const bool isRestSmaller = found.ratio > 1.0;
    const double smaller = isOne ? 0.0 : (isRestSmaller ? 1.0 : found.ratio) / (1.0 + found.ratio);
    // Not a quotient of its own, whose rounded denominator would cost it a whole ulp.
    const double larger = 1.0 - smaller;
    const double share = isOne || isRestSmaller ? larger : smaller;
    const double rest = isOne || isRestSmaller ? smaller : larger;
    *x = found.isInverse ? rest : share;
    *y = found.isInverse ? share : rest;
}

void inv_beta_df(double p, double q, double a, double b, double* x, double* y) {
    BetaQuantile(a, b).find(p, q, x, y);
}

}  // namespace vela::kernels
