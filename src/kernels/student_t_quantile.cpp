// Quantile of Student's t. Solved is ln P(T > t) = ln p in the variable ln t: both logarithms make
// the function nearly straight, in the power tail of few degrees of freedom exactly so, and keep
// p = 1e-280 as ordinary a number as p = 0.1. One step takes the derivatives of the density, which
// cost nothing, up to fourth order; from the starts below one or two evaluations are enough.
//
// Starts:
//   df = 1, df = 2    closed forms, final
//   p next to 1/2     the power series of the inverse about t = 0, final by itself
//   x = df / (df + t^2) small   the leading term of the tail series, inverted
//   df >= 2           a normal quantile put through Hill's (1970) expansion
//   else              the power series again, where it is not final
// A bracket on t catches every step that leaves it; then the interval is halved.

#include "conventions/error_channel.hpp"
#include "kernels/limits.hpp"
#include "kernels/normal.hpp"
#include "kernels/normal_start.hpp"
#include "kernels/student_t.hpp"

#include <cmath>
#include <limits>

namespace vela::kernels {
namespace {

using conventions::enter_kernel;
using conventions::kArgumentTooLarge;
using conventions::kernel_failed;
using conventions::kInvalidArgument;
using conventions::kNoConvergence;
using conventions::raise_level;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kSmallestNormalP = 1e-100;  // below it inv_normal_df() refuses
constexpr double kLargestLogT = 709.7;       // t = exp of this is still a double after a correction
constexpr double kSmallestDf = 1e-19;        // below it every t with p < 1/2 is too large
constexpr double kAcceptedError = 1e-14;     // estimated relative error in p after the last step
constexpr int kMaxSteps = 200;               // 3 are usual; halving alone needs about 60

/// t from a normal quantile z, Hill's expansion inverted.
double hill_start(double z, double df) {
    const double n = df - 0.5;
    const double c = 1.0 / n / n / 48.0;
    const double z2 = z * z;
    const double first = z * (z2 + 3.0) * c;
    const double second = z * (((4.0 * z2 + 33.0) * z2 + 240.0) * z2 + 855.0) * (0.1 * c * c);
    const double w = z - first * (1.0 - (3.0 * z2 + 3.0) * c) + second;
    return std::sqrt(df * std::expm1(w * w / n));
}

/// t from u = (1/2 - p) / density(0), the series of the inverse to the 7th power.
double centre_start(double u, double df) {
    const double r = 1.0 / df;
    const double u2 = u * u;
    const double c5 = (7.0 + r) / 120.0;
    const double c7 = (127.0 + r * (8.0 + r)) / 5040.0;
    return u + u * u2 * (1.0 + r) * (1.0 / 6.0 + u2 * (c5 + u2 * c7));
}

/// With relativeSlope = -d ln P / d ln t: the change of ln t that takes ln P from its value at t to
/// a value lower by q, up to q^3.
struct LogStep {
    double change;
    double error;  // estimate of the relative error in p that is left
};

LogStep log_step(double df, double y, double relativeSlope, double q) {
    const double fall = (df + 1.0) * y;                   // -d ln density / d ln t
    const double curvature = 1.0 + relativeSlope - fall;  // d ln relativeSlope / d ln t
    const double curvatureChange = relativeSlope * curvature - 2.0 * fall * (1.0 - y);
    const double e = q / relativeSlope;
    const double cubic = (2.0 * curvature * curvature - curvatureChange) / 6.0;
    const double size = 1.0 + std::fabs(curvature) + 1e-3 * relativeSlope;
    return {e * (1.0 - e * (0.5 * curvature - e * cubic)),
            relativeSlope * (e * e) * (e * e) * (size * size * size)};
}

/// ln(tail / p)
double log_excess(double tail, double p) {
    const double difference = tail - p;
    return std::fabs(difference) < 0.25 * p ? std::log1p(difference / p)
                                            : std::log(tail) - std::log(p);
}

/// exp(c) - 1; the sum t + t * this rounds once, where t * exp(c) would cost another ulp of t.
double small_expm1(double c) {
    return std::fabs(c) < 1e-3 ? c * (1.0 + c / 2 * (1.0 + c / 3 * (1.0 + c / 4 * (1.0 + c / 5))))
                               : std::expm1(c);
}

/// Corrects a positive start until p is met; false at the cap.
bool refine(const CentralT& distribution, double p, double* t) {
    double low = 0.0;
    double high = kLargestDouble;
    for (int step = 0; step < kMaxSteps; ++step) {
        const auto [tail, slope, y] = distribution.upper_tail(*t);
        (tail > p ? low : high) = *t;
        double next = -1.0;
        if (tail > 0.0 && slope > 0.0) {
            const double q = log_excess(tail, p);
            if (std::fabs(q) <= 4e-16) {
                return true;
            }
            const LogStep change = log_step(distribution.df(), y, slope / tail, q);
            if (std::fabs(change.change) < 1.0) {
                const bool room = *t < 1e307 || std::fabs(change.change) < 1e-3;
                next = room ? *t + *t * small_expm1(change.change) : *t;
                if (change.error < kAcceptedError || next == *t) {
                    *t = next;
                    return true;
                }
            }
        }
        if (!(next > low && next < high)) {
            next = low == 0.0               ? 0.1 * high
                   : high == kLargestDouble ? (low < 1e300 ? 10.0 * low : 0.5 * low + 0.5 * high)
                                            : std::sqrt(low) * std::sqrt(high);
        }
        if (next == *t) {
            return true;
        }
        *t = next;
    }
    return false;
}

enum class Start { kFinal, kGuess, kTooLarge };

Start start(const CentralT& distribution, double p, double* t) {
    const double df = distribution.df();
    const double a = 0.5 * df;
    if (df < kSmallestDf) {
        return Start::kTooLarge;
    }
    const double u = (0.5 - p) / distribution.peak();
    const double reach = u * std::sqrt((df + 1.0) / df);
    if (reach < 0.012) {
        *t = centre_start(u, df);
        return Start::kFinal;
    }
    const double logX = std::log(2.0 * p * distribution.leading_scale()) / a;
    if (logX < -40.0) {
        const double logT = 0.5 * (std::log(df) - logX);
        if (logT > kLargestLogT) {
            return Start::kTooLarge;
        }
        *t = std::exp(logT);
        return Start::kGuess;
    }
    const double leading = logX < 0.0 ? std::exp(logX) : 1.0;
    if (df >= 2.0 && leading > 0.02) {
        *t = hill_start(normal_start(p), df);
    } else if (reach < 0.9 && leading > 0.2) {
        *t = centre_start(u, df);
    } else {
        const double x = leading * std::exp(-leading / (2.0 * (a + 1.0)));
        *t = std::sqrt(df * ((1.0 - x) / x));
    }
    return Start::kGuess;
}

/// One and two degrees of freedom; false where t exceeds the range of doubles.
bool closed_form(double p, double df, double* t) {
    constexpr double pi = 3.141592653589793;
    if (df == 2.0) {
        *t = (1.0 - 2.0 * p) / std::sqrt(2.0 * p * (1.0 - p));
        return true;
    }
    if (p < 2e-309) {
        return false;
    }
    *t = p < 0.25 ? 1.0 / std::tan(pi * p) : std::tan(pi * (0.5 - p));
    return true;
}

void finite_upper_quantile(double p, double df, double* t) {
    const bool closed = df == 1.0 || df == 2.0;
    const CentralT distribution(df);
    const Start kind = closed ? (closed_form(p, df, t) ? Start::kFinal : Start::kTooLarge)
                              : start(distribution, p, t);
    if (kind == Start::kTooLarge) {
        *t = -kLargestDouble;
        raise_level(kArgumentTooLarge, "t_upper_qt");
    } else if (kind == Start::kGuess && !refine(distribution, p, t)) {
        *t = -kLargestDouble;
        raise_level(kNoConvergence, "t_upper_qt");
    }
}

bool in_domain(double p, double df, double largestP) {
    return p == p && df == df && p > 0.0 && p <= largestP && df > 0.0;
}

/// For arguments in the domain of t_upper_qt().
void upper_quantile(double p, double df, double* t) {
    if (p == 0.5) {
        *t = 0.0;
    } else if (df != kInfinity) {
        finite_upper_quantile(p, df, t);
    } else if (p >= kSmallestNormalP) {
        inv_normal_df(p, t);
        *t = kernel_failed() ? *t : -*t;
    } else {
        // the normal kernel ends here; this many degrees of freedom are the normal to the last bit
        finite_upper_quantile(p, 1e40, t);
    }
}

}  // namespace

void t_upper_qt(double p, double df, double* t) {
    enter_kernel("t_upper_qt");
    if (!in_domain(p, df, 0.5)) {
        *t = -kLargestDouble;
        raise_level(kInvalidArgument, "t_upper_qt");
        return;
    }
    upper_quantile(p, df, t);
}

void inv_t_df(double p, double df, double* t) {
    enter_kernel("inv_t_df");
    if (!in_domain(p, df, 1.0) || p == 1.0) {
        *t = -kLargestDouble;
        raise_level(kInvalidArgument, "inv_t_df");
        return;
    }
    upper_quantile(p > 0.5 ? 1.0 - p : p, df, t);  // 1 - p is exact from 0.5 on
    if (p < 0.5 && !kernel_failed()) {
        *t = -*t;
    }
}

}  // namespace vela::kernels
