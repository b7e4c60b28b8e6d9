// Noncentral t: what is valid, which method serves where, and the quantile.
//
// Regions, for t > 0 after reflection:
//   |delta| <= 12, 0.5 <= df <= 1e7, 1e-3 < t < 1e40, and little cancellation: a mixture of beta
//   probabilities (noncentral_t_mixture.cpp);
//   everything else: quadrature (noncentral_t_integral.cpp), which alone would do everywhere but
//   costs two to eight times as much.
// Largest relative error measured, over random arguments with df from 1e-3 to 1e8 and |delta| up to
// 1e4, tails down to 1e-280: 2e-12 where the mixture loses three digits; elsewhere 2e-13, and
// 7e-13 for lower tails at df near 1e-3 that are complements.
//
// Reflection: P(T_delta <= t) = P(T_-delta > -t). Only t >= 0 is ever computed, so the identity
// holds to the last bit.
//
// Quantile: Newton's method on ln P(T > t) - ln q in w = asinh(t), in which both the bulk and the
// power-law tails are nearly straight, kept inside a bracket that bisection shrinks where a step
// leaves it or the tail underflows. About three evaluations.

#include "kernels/noncentral_t.hpp"

#include "conventions/error_channel.hpp"
#include "kernels/limits.hpp"
#include "kernels/noncentral_t_integral.hpp"
#include "kernels/noncentral_t_mixture.hpp"
#include "kernels/normal.hpp"
#include "kernels/student_t.hpp"
#include "vela/missing_value.hpp"

#include <algorithm>
#include <cmath>

namespace vela::kernels {
namespace {

using conventions::enter_kernel;
using conventions::kArgumentTooLarge;
using conventions::kernel_failed;
using conventions::kInvalidArgument;
using conventions::kNoConvergence;
using conventions::kNoError;
using conventions::raise_level;

// 2^26.5: the square of a larger delta has rounding errors of the size of 1.
constexpr double kLargestNoncentrality = 94906265.0;

// The flat left tail of the integrand is 40 / df long.
constexpr double kSmallestDf = 1e-20;

bool is_nan(double x) { return x != x; }

bool is_infinite(double x) { return std::fabs(x) > kLargestDouble; }

/// What is wrong with the parameters; `x` is the first argument, whatever it means.
conventions::ErrorLevel check(double x, double df, double delta) {
    if (is_nan(x) || is_nan(df) || is_nan(delta) || df <= 0.0 || is_infinite(delta)) {
        return kInvalidArgument;
    }
    const bool isBeyondReach =
        delta != 0.0 && (std::fabs(delta) > kLargestNoncentrality || df < kSmallestDf);
    return isBeyondReach ? kArgumentTooLarge : kNoError;
}

/// Both tails for finite df and t > 0: the mixture where it serves, else the integral.
TailPair positive_tails(double t, double df, double delta) {
    constexpr double tooFarBelow = 2.5;  // the upper tail would be rejected as too near 1
    if (delta - t < tooFarBelow) {
        const double upper = noncentral_t_mixture(t, df, delta).upper;
        if (upper >= 0.0) {
            return {1.0 - upper, upper};
        }
    }
    return noncentral_t_tails(t, df, delta);
}

/// Both tails for finite df and any finite t.
TailPair reflected_tails(double t, double df, double delta) {
    if (t > 0.0) {
        return positive_tails(t, df, delta);
    }
    if (t < 0.0) {
        const TailPair mirrored = positive_tails(-t, df, -delta);
        return {mirrored.upper, mirrored.lower};
    }
    return {normal_upper_tail(delta), normal_upper_tail(-delta)};
}

double reflected_density(double t, double df, double delta) {
    const double signedDelta = t < 0.0 ? -delta : delta;
    const double size = std::fabs(t);
    const double density = noncentral_t_mixture(size, df, signedDelta).density;
    return density >= 0.0 ? density : noncentral_t_density(size, df, signedDelta);
}

/// P(T > t) and the density, as one step of the quantile needs them.
MixtureResult upper_and_density(double t, double df, double delta) {
    MixtureResult both;
    if (t > 0.0) {
        both = noncentral_t_mixture(t, df, delta);
    }
    if (both.upper < 0.0) {
        both.upper = reflected_tails(t, df, delta).upper;
    }
    if (both.density < 0.0) {
        both.density = reflected_density(t, df, delta);
    }
    return both;
}

// ---------------------------------------------------------------- quantile

/// z with P(Z > z) = q for q <= 1/2, within 4.5e-4 (Hastings 1955, sheet 68): a start only.
double rough_normal_quantile(double q) {
    const double r = std::sqrt(-2.0 * std::log(q));
    return r - (2.515517 + r * (0.802853 + r * 0.010328)) /
                   (1.0 + r * (1.432788 + r * (0.189269 + r * 0.001308)));
}

/// Start for P(T > t) = q: T is treated as if t S - Z were normal (Jennett & Welch 1939). Where
/// that has no solution the tail is heavy, and the iteration needs no good start.
double start_value(double q, double df, double delta) {
    const double z = rough_normal_quantile(q);
    const double bias = 1.0 - 0.25 / std::max(df, 1.0);
    const double perDf = 0.5 / std::max(df, 1.0);
    const double a = bias * bias - z * z * perDf;
    const double discriminant = bias * bias + (delta * delta - z * z) * perDf;
    if (a < 0.1 || discriminant <= 0.0 || df < 1.0) {
        return std::max(1.0, delta);
    }
    return (bias * delta + z * std::sqrt(discriminant)) / a;
}

// sinh(kEnd) is just below the largest double.
constexpr double kEnd = 710.47;

/// The iterate and what encloses the root.
struct Search {
    double t = 0.0;
    double wLow = -kEnd;  // P(T > sinh(wLow)) >= q
    double wHigh = kEnd;
    bool isFinal = false;
};

/// -d P(T > t) / d asinh(t). Far out, where the density underflows long before the tail does, the
/// tail is a multiple of t^-df.
double tail_slope(double t, double df, const MixtureResult& both) {
    constexpr double farOut = 1e20;
    constexpr double smallest = 1e-290;
    return t > farOut && both.density < smallest ? df * both.upper
                                                 : both.density * std::hypot(1.0, t);
}

/// Whether there is a root at all: where a step leaves the range, its end is tried once.
bool try_open_end(Search& search, double w, double next) {
    const double end = std::copysign(kEnd, next);
    const bool isOpen = end == search.wLow || end == search.wHigh;
    if (std::fabs(next) < kEnd || w == end || !isOpen) {
        return false;
    }
    search.t = std::sinh(end);
    return true;
}

/// One step from search.t, where the tail is `upper` and falls by `slope` per unit of w.
void advance(Search& search, double upper, double slope, double logQ) {
    const double w = std::asinh(search.t);
    // A tail that underflows lies beyond the root.
    const double excess = upper > 0.0 ? std::log(upper) - logQ : -1.0;
    (excess > 0.0 ? search.wLow : search.wHigh) = w;
    constexpr double flattest = 1e-8;  // of ln P(T > t); a flatter one says nothing about the root
    if (upper > 0.0 && slope > flattest * upper) {
        const double dw = excess * (upper / slope);
        const double next = w + dw;
        if (std::fabs(dw) < 1e-3 && next >= search.wLow && next <= search.wHigh) {
            // In t itself, which asinh and sinh would round. Newton's method squares an error, so
            // the step from an error of 3e-8 is the last one; so is one that t hardly feels.
            const double step = dw * std::hypot(1.0, search.t);
            search.t += step;
            search.isFinal =
                std::fabs(excess) < 3e-8 || std::fabs(step) < 4e-16 * std::fabs(search.t);
            return;
        }
        if (try_open_end(search, w, next)) {
            return;
        }
        if (next > search.wLow && next < search.wHigh) {
            search.t = std::sinh(next);
            return;
        }
    }
    const double middle = 0.5 * (search.wLow + search.wHigh);
    search.isFinal = middle <= search.wLow || middle >= search.wHigh;
    search.t = std::sinh(middle);
}

/// The t with P(T > t) = q, 0 < q <= 1/2, for finite df.
conventions::ErrorLevel solve_upper(double q, double df, double delta, double* t) {
    constexpr int maxSteps = 300;  // pure bisection needs about 65
    const double logQ = std::log(q);
    Search search;
    search.t = start_value(q, df, delta);
    for (int i = 0; i < maxSteps && !search.isFinal; ++i) {
        const MixtureResult both = upper_and_density(search.t, df, delta);
        advance(search, both.upper, tail_slope(search.t, df, both), logQ);
    }
    *t = search.t;
    if (!search.isFinal) {
        return kNoConvergence;
    }
    const bool isBeyondEnd = search.wHigh >= kEnd || search.wLow <= -kEnd;
    return isBeyondEnd && std::fabs(search.t) > std::sinh(kEnd - 1e-9) ? kArgumentTooLarge
                                                                       : kNoError;
}

/// Quantile for infinite df.
conventions::ErrorLevel solve_normal(double p, double delta, double* t) {
    *t = normal_inv_cdf(p, delta, 1.0);
    return *t == MissingValue ? kNoConvergence : kNoError;
}

}  // namespace

void t_ncdf(double t, double df, double delta, double* lower, double* upper) {
    enter_kernel("t_ncdf");
    *lower = kLargestDouble;
    *upper = kLargestDouble;
    const auto level = check(t, df, delta);
    if (level != kNoError) {
        raise_level(level, "t_ncdf");
        return;
    }
    if (delta == 0.0) {
        t_df(t, df, lower, upper);
        return;
    }
    if (is_infinite(t)) {
        *lower = t > 0.0 ? 1.0 : 0.0;
        *upper = 1.0 - *lower;
        return;
    }
    if (is_infinite(df)) {
        normal_df(t - delta, lower, upper);
        return;
    }
    const TailPair tails = reflected_tails(t, df, delta);
    enter_kernel("t_ncdf");  // whatever a central term on the way had to say
    *lower = tails.lower;
    *upper = tails.upper;
}

double t_npdf(double t, double df, double delta) {
    enter_kernel("t_npdf");
    const auto level = check(t, df, delta);
    if (level != kNoError) {
        raise_level(level, "t_npdf");
        return MissingValue;
    }
    if (delta == 0.0) {
        const double density = t_pdf(t, df);
        return kernel_failed() ? MissingValue : density;
    }
    if (is_infinite(t)) {
        return 0.0;
    }
    const double density =
        is_infinite(df) ? normal_density(t - delta) : reflected_density(t, df, delta);
    enter_kernel("t_npdf");
    return density;
}

void inv_t_ncdf(double p, double df, double delta, double* t) {
    enter_kernel("inv_t_ncdf");
    *t = -kLargestDouble;
    auto level = check(p, df, delta);
    if (level == kNoError && (p <= 0.0 || p >= 1.0)) {
        level = kInvalidArgument;
    }
    if (level != kNoError) {
        raise_level(level, "inv_t_ncdf");
        return;
    }
    if (delta == 0.0) {
        inv_t_df(p, df, t);
        return;
    }
    double solution = 0.0;
    if (is_infinite(df)) {
        level = solve_normal(p, delta, &solution);
    } else if (p <= 0.5) {
        level = solve_upper(p, df, -delta, &solution);
        solution = -solution;
    } else {
        level = solve_upper(1.0 - p, df, delta, &solution);
    }
    if (level == kNoError) {
        *t = solution;
    } else {
        raise_level(level, "inv_t_ncdf");
    }
}

}  // namespace vela::kernels
