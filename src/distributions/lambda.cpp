// Tukey's lambda distribution is given by its quantile. Everything here is written in the logit of
// the smaller tail v <= 1/2, s = ln((1 - v) / v) >= 0, with b = -ln(1 - v) = ln(1 + e^-s):
//
//   |z| = ((1 - v)^l - v^l) / l = e^(-l b) (1 - e^(-l s)) / l
//
// where expm1 keeps all digits next to l = 0, to v = 1/2 (s = 0) and to v = 0 (s large). The
// cumulative function solves this for s after both sides are straightened by
// T(w) = -ln(1 - l w) / l, which turns the right side into s where b is negligible.

#include "vela/lambda.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/exponential.hpp"
#include "distributions/standard_score.hpp"
#include "kernels/double_double.hpp"
#include "kernels/positive_quantile.hpp"

#include <cmath>

namespace vela {
namespace distributions {
namespace {

constexpr double kSmallLambda = 1e-17;  // |l| times the size of s or z, below which l counts as 0
constexpr double kVanishingLogit = 800.0;  // v = 0 beyond
constexpr double kLargeExponent = 700.0;

/// T(|z|) and how it goes on, at the logit s.
struct Straightened {
    double value;
    double rate;  // dT / ds = rate / rest; apart, because next to s = 0 the quotient may overflow
    double rest;
};

/// -ln(1 - l w) / l where l w is not near 1, from l s with w = e^(-l b) (1 - e^(-l s)) / l.
double straightened_near_centre(double lambda, double s, double b) {
    const double power = std::exp(-lambda * b);
    return std::fabs(lambda) * s < kSmallLambda
               ? power * s  // without a product that may underflow
               : -std::log1p(power * std::expm1(-lambda * s)) / lambda;
}

Straightened straightened_negative(double lambda, double s, double v, double b) {
    const double m = -lambda;
    const double rest = -std::expm1(-m * s) + std::exp(-m * (s + b));  // (1 - l w) v^m
    const double value =
        m * (s + b) < 1.0 ? straightened_near_centre(lambda, s, b) : (s + b) + std::log(rest) / m;
    return {value, (1.0 - v) + std::exp(-m * s) * v, rest};
}

Straightened straightened_positive(double lambda, double s, double v, double b) {
    const double powerOfV = std::exp(-lambda * (s + b));
    const double powerOfRest = std::exp(-lambda * b);
    const double rest = -std::expm1(-lambda * b) + powerOfV;  // 1 - l w, a sum of positive terms
    if (!(rest > 1e-300)) {
        return {kVanishingLogit, 0.0, 1.0};
    }
    const double value =
        rest > 0.5 ? straightened_near_centre(lambda, s, b) : -std::log(rest) / lambda;
    return {value, powerOfV * (1.0 - v) + powerOfRest * v, rest};
}

kernels::TailAndSlope straightened_at(double lambda, double s) {
    s = std::fmin(s, 2.0 * kVanishingLogit);  // flat beyond; keeps products with lambda finite
    const double e = std::exp(-s);
    const double v = e / (1.0 + e);
    const double b = std::log1p(e);
    const Straightened t = lambda < 0.0 ? straightened_negative(lambda, s, v, b)
                                        : straightened_positive(lambda, s, v, b);
    return {t.value, t.rest > 0.0 ? s * t.rate / t.rest : 0.0};
}

/// T(|z|); infinite at and beyond the end of a bounded support.
double straightened_score(double lambda, double magnitude) {
    if (magnitude < kSmallLambda / std::fmax(std::fabs(lambda), 1e-300)) {
        return magnitude;
    }
    if (lambda < 0.0) {
        const double product = std::log(-lambda) + std::log(magnitude);
        return (product > kLargeExponent ? product : std::log1p(-lambda * magnitude)) / -lambda;
    }
    if (!(magnitude < 1e300) || magnitude > 2.0 / std::fmax(lambda, 1e-300)) {
        return HUGE_VAL;
    }
    const kernels::DoubleDouble lw = kernels::two_product(lambda, magnitude);
    const double rest = (1.0 - lw.hi) - lw.lo;
    if (rest <= 0.0) {
        return HUGE_VAL;
    }
    return (rest > 0.5 ? -std::log1p(-lw.hi) : -std::log(rest)) / lambda;
}

/// The logit s of the smaller tail at |z|; MissingValue where it cannot be found.
double logit_at(double lambda, double magnitude) {
    if (magnitude == 0.0) {
        return 0.0;
    }
    if (std::fabs(lambda) < kSmallLambda && std::fabs(lambda) * magnitude < kSmallLambda) {
        return magnitude;
    }
    const double target = straightened_score(lambda, magnitude);
    if (target > kVanishingLogit) {
        return HUGE_VAL;
    }
    double s = 0.0;
    const auto outcome = kernels::find_positive_quantile(
        target, false, target, [=](double at) { return straightened_at(lambda, at); }, &s);
    return outcome == kernels::QuantileOutcome::kFound ? s : MissingValue;
}

double lambda_cdf(double x, double lambda, double location, double scale, bool upper) {
    const double z = standard_score(x, location, scale);
    if (z != z || lambda != lambda || std::isinf(lambda)) {
        return MissingValue;
    }
    const double s = std::isinf(z) ? HUGE_VAL : logit_at(lambda, std::fabs(z));
    if (s == MissingValue) {
        return MissingValue;
    }
    const double e = std::exp(-s);
    return ((z < 0.0) == upper ? 1.0 : e) / (1.0 + e);
}

double lambda_pdf(double x, double lambda, double location, double scale) {
    const double z = standard_score(x, location, scale);
    if (z != z || lambda != lambda || std::isinf(lambda)) {
        return MissingValue;
    }
    const double s = std::isinf(z) ? HUGE_VAL : logit_at(lambda, std::fabs(z));
    if (s == MissingValue || std::isinf(s)) {
        return s == MissingValue ? MissingValue : 0.0;
    }
    // The derivative of the quantile by v is v^(l - 1) + (1 - v)^(l - 1).
    const double b = std::log1p(std::exp(-s));
    const double exponentOfV = (1.0 - lambda) * (s + b);
    const double exponentOfRest = (1.0 - lambda) * b;
    const double larger = std::fmax(exponentOfV, exponentOfRest);
    return conventions::value_unless_overflow(0.0, [=] {
        return exp_over(larger, scale) /
               (1.0 + std::exp(-(larger - std::fmin(exponentOfV, exponentOfRest))));
    });
}

/// |z| at the smaller tail v.
double score_at(double lambda, double v) {
    const double b = -std::log1p(-v);
    const double s = v > 1e-3 ? std::log1p((1.0 - 2.0 * v) / v) : -b - std::log(v);
    if (std::fabs(lambda) * kVanishingLogit < kSmallLambda) {
        return s;
    }
    if (-lambda * s > kLargeExponent) {
        return kernels::safe_exp(-lambda * (s + b) - std::log(-lambda));
    }
    return kernels::safe_exp(-lambda * b) * (-std::expm1(-lambda * s) / lambda);
}

double lambda_inv_cdf(double p, double lambda, double location, double scale) {
    if (!std::isgreaterequal(p, 0.0) || !std::islessequal(p, 1.0) || !std::isfinite(lambda)) {
        return MissingValue;
    }
    const double v = p <= 0.5 ? p : 1.0 - p;
    if (v == 0.0 && !(lambda > 0.0)) {
        return MissingValue;
    }
    return conventions::value_unless_overflow(MissingValue, [=] {
        const double magnitude = v == 0.0 ? 1.0 / lambda : score_at(lambda, v);
        return from_standard_score(p <= 0.5 ? -magnitude : magnitude, location, scale);
    });
}

}  // namespace
}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double LambdaPdf(double x, double lambda, double location, double scale) {
    return call<kIsOrdinary>(distributions::lambda_pdf, x, lambda, location, scale);
}

void LambdaPdf(double* out, const double* x, std::size_t n, double lambda, double location,
               double scale) {
    call<kIsOrdinary>(distributions::lambda_pdf, out, x, n, lambda, location, scale);
}

double LambdaCdf(double x, double lambda, double location, double scale, bool upper) {
    return call<kGivesMissing>(distributions::lambda_cdf, x, lambda, location, scale, upper);
}

void LambdaCdf(double* out, const double* x, std::size_t n, double lambda, double location,
               double scale, bool upper) {
    call<kGivesMissing>(distributions::lambda_cdf, out, x, n, lambda, location, scale, upper);
}

double LambdaInvCdf(double p, double lambda, double location, double scale) {
    return call<kGivesMissing>(distributions::lambda_inv_cdf, p, lambda, location, scale);
}

void LambdaInvCdf(double* out, const double* p, std::size_t n, double lambda, double location,
                  double scale) {
    call<kGivesMissing>(distributions::lambda_inv_cdf, out, p, n, lambda, location, scale);
}

}  // namespace vela
