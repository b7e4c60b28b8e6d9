// Tails and density of Student's t. With a = df / 2, x = df / (df + t^2) and y = 1 - x, the tail
// P(T > t) is half the incomplete beta function I_x(a, 1/2); one shape being 1/2 allows faster
// methods than the general kernel has, each good to a few units of the last place:
//
//   df = 1, df = 2          closed forms
//   a >= 10, -ln x <= 1.5   expansion in Mills' ratio: with u = -ln of the integration variable,
//                           the integrand is exp(-N u) u^(-1/2) (sinh(u/2) / (u/2))^(-1/2),
//                           N = a - 1/4, and the last factor is expanded in powers of u^2 (the
//                           expansion of Didonato & Morris 1992, section 9, at b = 1/2, where its
//                           incomplete gamma functions become normal tails and its coefficients
//                           constants)
//   a < 10, y small         P(0 < T <= t) by the power series in y, taken from 1/2
//   elsewhere               power series in w = (1 - sqrt(y)) / 2, the quadratic transformation
//                           2F1(a, 1/2; a + 1; 4 w (1 - w)) = 2F1(2a, 1; a + 1; w): half the terms
//                           of the series in x, and quick also where x is not small
//
// Where a >= 10 everything exponential is exp(-a L) with L = ln(1 + t^2 / df) in two doubles,
// because t^2 / df rounded to one would cost df = 1e8 eight digits, and the exponent rounded to one
// would cost a tail of 1e-280 three.

#include "kernels/student_t.hpp"

#include "conventions/error_channel.hpp"
#include "kernels/beta_log.hpp"
#include "kernels/beta_mills.hpp"
#include "kernels/limits.hpp"
#include "kernels/normal.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vela::kernels {
namespace {

using conventions::enter_kernel;
using conventions::kInvalidArgument;
using conventions::kWarning;
using conventions::raise_level;

constexpr double kPi = 3.141592653589793;
constexpr double kSqrtPi = 1.772453850905516;
constexpr double kSqrt2Pi = 2.5066282746310002;
constexpr double kLn2 = 0.6931471805599453;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

constexpr double kLargeShape = 10.0;      // a from which the asymptotic expansions hold 1e-17
constexpr double kLargeLogBound = 1.5;    // L up to which the Mills expansion is used
constexpr double kTermTolerance = 1e-17;  // terms below this fraction of the sum end a series
constexpr int kMaxTerms = 200;            // never reached: the slowest region needs 60

/// t^2 / df and ln(1 + t^2 / df).
struct TRatio {
    double ratio;
    DoubleDouble log;
};

/// The same where t^2 or t^2 / df may leave the range of doubles: exponents apart. A ratio too
/// large for a double is cut to 1e300, where x = 0 and y = 1 already hold to the last bit.
TRatio extreme_ratio(double t, double df) {
    int tExponent = 0;
    int dfExponent = 0;
    const double tFraction = std::frexp(t, &tExponent);
    const double dfFraction = std::frexp(df, &dfExponent);
    const DoubleDouble fraction = two_product(tFraction, tFraction) / dfFraction;
    const int exponent = 2 * tExponent - dfExponent;
    if (exponent <= 200) {
        const DoubleDouble r{std::ldexp(fraction.hi, exponent), std::ldexp(fraction.lo, exponent)};
        return {r.hi, log1p_two_doubles(r)};
    }
    const DoubleDouble shift =
        two_product(kLn2, exponent) + DoubleDouble{2.3190468138462996e-17 * exponent, 0.0};
    return {exponent < 990 ? std::ldexp(fraction.hi, exponent) : 1e300,
            log_two_doubles(fraction) + shift};
}

/// Whether t^2 / df is well inside the range of doubles.
bool ordinary(double t, double df) { return t > 1e-70 && t < 1e70 && df > 1e-100 && df < 1e100; }

TRatio t_ratio(double t, double df) {
    if (ordinary(t, df)) {
        const DoubleDouble r = two_product(t, t) / df;
        return {r.hi, log1p_two_doubles(r)};
    }
    return extreme_ratio(t, df);
}

/// Gamma(a + 1/2) / (Gamma(a) sqrt(a - 1/4)) for a >= 10, a series in 1 / (a - 1/4)^2.
double large_gamma_ratio(double reciprocalSquare) {
    const double w = reciprocalSquare;
    return 1.0 +
           w * (0.015625 +
                w * (-0.0023193359375 +
                     w * (0.0012035369873046875 +
                          w * (-0.001298762857913971 +
                               w * (0.0023855575127527118 +
                                    w * (-0.006670963462056534 +
                                         w * (0.026412154660064857 - w * 0.14065807079546203)))))));
}

/// Gamma(a + 1/2) / Gamma(a + 1) for 0 <= a < 10 by recurrence from above 10.
double small_gamma_ratio(double a) {
    double numerator = 1.0;  // (a + 1) (a + 2) ... , then (a + 1/2) (a + 3/2) ...
    double denominator = a + 0.5;
    double shifted = a + 1.0;
    while (shifted < kLargeShape) {
        numerator *= shifted;
        denominator *= shifted + 0.5;
        shifted += 1.0;
    }
    const double n = shifted - 0.25;
    return numerator / denominator * std::sqrt(n) * large_gamma_ratio(1.0 / (n * n));
}

/// Tail over largeScale * exp(-N L) by the expansion in Mills' ratio; zSquare = 2 N L.
double mills_expansion(double zSquare, double step) {
    // (sinh(u/2) / (u/2))^(-1/2) in powers of u^2
    constexpr double c[] = {1.0,
                            -0.020833333333333332,
                            0.000390625,
                            -7.879670965608466e-06,
                            1.6967665791721782e-07,
                            -3.805064191721906e-09,
                            8.748377596315407e-11,
                            -2.044523359411974e-12,
                            4.833351797967704e-14,
                            -1.152434101767386e-15,
                            2.76605204359937e-17,
                            -6.67428195089166e-19,
                            1.61745507718158e-20,
                            -3.93397792009138e-22,
                            9.597634062586047e-24,
                            -2.347690291162632e-25};
    const double z = std::sqrt(zSquare);
    const double powerStep = zSquare * zSquare * step;
    double moment =
        mills_ratio(z);  // of order 4 n of the normal tail beyond z, over phi(z), scaled
    double power = z * step;
    double sum = moment;
    for (int n = 1; n < 16; ++n) {
        // two steps of moment of order k = z^(k-1) + (k - 1) moment of order k - 2
        const double k = 4 * n - 1;
        moment = power * (zSquare + k) + step * (k * (k - 2.0)) * moment;
        power *= powerStep;
        const double term = c[n] * moment;
        sum += term;
        if (!(std::fabs(term) > kTermTolerance * sum)) {
            break;
        }
    }
    return sum;
}

/// 1 + (a + 1/2) y / (3/2) + ... : P(0 < T <= t) = sqrt(y) x^a / B(a, 1/2) times this.
double centre_series(double a, double y) {
    double term = 1.0;
    double sum = 1.0;
    for (double k = 0.5; k < kMaxTerms; k += 1.0) {
        term *= y * ((a + k) / (k + 1.0));
        sum += term;
        if (!(term > kTermTolerance * sum)) {
            break;
        }
    }
    return sum;
}

/// 2F1(2a, 1; a + 1; w).
double tail_series(double a, double w) {
    double term = 1.0;
    double sum = 1.0;
    for (double k = 0.0; k < kMaxTerms; k += 1.0) {
        term *= w * ((2.0 * a + k) / (a + (k + 1.0)));
        sum += term;
        if (!(term > kTermTolerance * sum)) {
            break;
        }
    }
    return sum;
}

/// y up to which the series about t = 0 is the shorter one.
double centre_bound(double a) { return 0.25 - 0.01 * a; }

}  // namespace

CentralT::CentralT(double df) : m_df(df) {
    if (df != df || df <= 0.0) {
        return;
    }
    if (df == kInfinity) {
        m_kind = Kind::kNormal;
        return;
    }
    m_a = 0.5 * df;
    if (df == 1.0 || df == 2.0) {
        m_kind = df == 1.0 ? Kind::kOne : Kind::kTwo;
        m_peak = df == 1.0 ? 1.0 / kPi : 0.3535533905932738;
        return;
    }
    if (m_a < kLargeShape) {
        m_kind = Kind::kSmall;
        m_seriesScale = small_gamma_ratio(m_a) / kSqrtPi;
        m_centreScale = m_seriesScale * m_a;
        m_peak = m_seriesScale * 0.5 * std::sqrt(df);
        return;
    }
    m_kind = Kind::kLarge;
    m_reduced = two_sum(m_a, -0.25);
    const double halfReciprocal = 0.5 / m_reduced.hi;
    m_largeStep = halfReciprocal * halfReciprocal;
    const double ratio = large_gamma_ratio(4.0 * m_largeStep);
    m_largeScale = ratio / kSqrt2Pi;
    m_centreScale = ratio * std::sqrt(m_reduced.hi) / kSqrtPi;
    m_seriesScale = m_centreScale / m_a;
    m_peak = ratio * std::sqrt(m_reduced.hi / m_a) / kSqrt2Pi;
}

double CentralT::closed_form(double t) const {
    if (m_kind == Kind::kOne) {
        return t > 1.0 ? std::atan(1.0 / t) / kPi : 0.5 - std::atan(t) / kPi;
    }
    if (t > 1e100) {  // 2 beside t^2 is nothing, and t^2 might overflow
        return 0.5 / t / t;
    }
    const double root = std::sqrt(2.0 + t * t);
    return 1.0 / root / (root + t);
}

CentralT::TailAndSlope CentralT::large_df(DoubleDouble log, double ratio, double t) const {
    const DoubleDouble exponent = log * m_reduced;
    if (exponent.hi > 740.0) {
        return {0.0, 0.0, 1.0};
    }
    const double exponential = exp_minus(exponent);
    const double x = 1.0 / (1.0 + ratio);
    const double rootX = std::sqrt(x);
    return {exponential * (m_largeScale * mills_expansion(2.0 * exponent.hi, m_largeStep)),
            m_peak * exponential * (rootX * std::sqrt(rootX)) * t, ratio * x};
}

CentralT::TailAndSlope CentralT::series(double power, double ratio) const {
    const double x = 1.0 / (1.0 + ratio);
    const double y = ratio < 1e200 ? ratio * x : 1.0;
    const double rootY = std::sqrt(y);
    const double slope = m_peak * power * (rootY * std::sqrt(m_df));
    if (m_kind == Kind::kSmall && y <= centre_bound(m_a)) {
        const double centre = rootY * power * centre_series(m_a, y);
        return {0.5 - m_centreScale * centre, slope, y};
    }
    const double w = 0.5 * x / (1.0 + rootY);
    return {power * (0.5 * m_seriesScale * tail_series(m_a, w)), slope, y};
}

CentralT::TailAndSlope CentralT::upper_tail(double t) const {
    if (m_a < kLargeShape && ordinary(t, m_df)) {
        // x^a is at most 10 roundings of x away; two doubles are not needed
        const double ratio = t * t / m_df;
        return series(std::pow(1.0 / (1.0 + ratio), m_a), ratio);
    }
    const TRatio r = t_ratio(t, m_df);
    if (m_a > 1.0 && r.log.hi > 1e4 / m_a) {  // a L might overflow
        return {0.0, 0.0, 1.0};
    }
    return m_kind == Kind::kLarge && r.log.hi <= kLargeLogBound
               ? large_df(r.log, r.ratio, t)
               : series(exp_minus(r.log * m_a), r.ratio);
}

void CentralT::tails(double t, double* lower, double* upper) const {
    enter_kernel("t_df");
    if (m_kind == Kind::kInvalid || t != t) {
        raise_level(kInvalidArgument, "t_df");
        *lower = *upper = kLargestDouble;
        return;
    }
    if (m_kind == Kind::kNormal) {
        normal_df(t, lower, upper);
        return;
    }
    double small = 0.5;
    const double magnitude = std::fabs(t);
    if (magnitude == kInfinity) {
        small = 0.0;
    } else if (magnitude > 0.0) {
        const bool closed = m_kind == Kind::kOne || m_kind == Kind::kTwo;
        small = closed ? closed_form(magnitude) : std::min(upper_tail(magnitude).tail, 0.5);
        if (small < kUnderflow) {
            small = 0.0;
            raise_level(kWarning, "t_df");
        }
    }
    *lower = t > 0.0 ? 1.0 - small : small;
    *upper = t > 0.0 ? small : 1.0 - small;
}

double CentralT::finite_density(double t) const {
    if (t == 0.0) {
        return m_peak;
    }
    const DoubleDouble log = t_ratio(t, m_df).log;
    if (m_a > 1.0 && log.hi > 1e4 / m_a) {
        return 0.0;
    }
    return m_peak * exp_minus(log * two_sum(m_a, 0.5));
}

double CentralT::density(double t) const {
    enter_kernel("t_pdf");
    if (m_kind == Kind::kInvalid || t != t) {
        raise_level(kInvalidArgument, "t_pdf");
        return kLargestDouble;
    }
    const double magnitude = std::fabs(t);
    if (magnitude == kInfinity) {
        return 0.0;
    }
    if (m_kind == Kind::kNormal) {
        // beyond 40 nothing is left, and the square might overflow
        return magnitude > 40.0 ? 0.0
                                : exp_minus(two_product(0.5 * magnitude, magnitude)) / kSqrt2Pi;
    }
    return finite_density(magnitude);
}

void t_df(double t, double df, double* lower, double* upper) {
    CentralT(df).tails(t, lower, upper);
}

double t_pdf(double t, double df) { return CentralT(df).density(t); }

}  // namespace vela::kernels
