// The regularized incomplete gamma function in the manner of Didonato and Morris (1986),
// Computation of the incomplete gamma function ratios and their inverse, ACM TOMS 12, at a working
// accuracy of 1e-9: the stops of the series are part of the results, because every normal,
// chi-square and Poisson probability rests on them.
//
//   x <= t             lower series
//   x > t, a, x < 1    small-shape series for Gamma(a, x)
//   x > t otherwise    upper sum down to the fractional part of a, then Legendre's fraction there
//
// with t = a - 1/3, near the median, for a >= 0.59 and (Gamma(a + 1) / 2)^(1/a) below. The smaller
// tail is computed, the other is its complement. Tails below exp(-662.34472) count as 0.
//
// The finite and infinite sums are defined as a forward count of their terms and a backward sum.
// Small ones are added up while they are counted, which comes to the same within a few ulps.

#include "kernels/incomplete_gamma.hpp"

#include "conventions/error_channel.hpp"
#include "kernels/double_double.hpp"
#include "kernels/limits.hpp"
#include "kernels/stirling.hpp"

#include <array>
#include <cerrno>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <utility>

namespace vela::kernels {
namespace {

using conventions::clear_negative_level;
using conventions::enter_kernel;
using conventions::error_channel;
using conventions::kInvalidArgument;
using conventions::kNoConvergence;
using conventions::kWarning;
using conventions::name_kernel;
using conventions::raise_level;

constexpr double kLargestShape = 94906265.0;      // beyond it x - a has no digits left
constexpr double kLargestArgument = 189812530.0;  // beyond it the upper tail of every shape is 0
constexpr double kSmallestShape = 5.6e-309;       // below it 1/a overflows
constexpr double kMaxTerms = 1e6;
constexpr int kMaxFractionSteps = 80;
constexpr int kMaxSmallShapeTerms = 42;
constexpr double kSmallShape = 0.59;               // below it the switch point needs Gamma(a + 1)
constexpr double kLargestSmallSwitchPoint = 0.26;  // there; it grows with the shape, to 0.2557
constexpr double kQuickShape = 9.0;                // beyond it stirling_remainder() is a short sum
constexpr double kLn2 = 0.6931471805599453;

/// compute(), unless an earlier call has left its value.
template <class Compute>
double once(double& value, Compute compute) {
    if (value != value) {
        value = compute();
    }
    return value;
}

/// ln(x / a), through the relative difference where x and a are on one side of 1.
template <class LogA>
double log_ratio(double x, double a, LogA logA) {
    if ((x >= 1.0) != (a >= 1.0)) {
        return std::log(x) - logA();
    }
    return x >= a ? std::log1p((x - a) / a) : -std::log1p((a - x) / x);
}

double log_density_from(double x, double a, double logRatio, double remainder) {
    return logRatio * a + (a - x) - remainder - logRatio;
}

/// Gamma(a) - 1/a for 0 <= a <= 1, from the power series of 1/Gamma(1 + a) (Abramowitz and Stegun
/// 1964, 6.1.34): with 1/Gamma(1 + a) = 1 + a h(a) the difference is -h(a) / (1 + a h(a)).
double gamma_minus_reciprocal(double a) {
    static constexpr double kCoefficients[] = {
        0.57721566490153286,     -0.65587807152025388,    -0.042002635034095236,
        0.16653861138229149,     -0.042197734555544337,   -0.0096219715278769736,
        0.0072189432466630995,   -0.0011651675918590651,  -0.00021524167411495097,
        0.00012805028238811619,  -2.0134854780788239e-5,  -1.2504934821426707e-6,
        1.1330272319816959e-6,   -2.0563384169776071e-7,  6.1160951044814158e-9,
        5.0020076444692229e-9,   -1.1812745704870201e-9,  1.0434267116911005e-10,
        7.7822634399050713e-12,  -3.6968056186422057e-12, 5.100370287454476e-13,
        -2.0583260535665068e-14, -5.348122539423018e-15,  1.2267786282382608e-15,
        -1.1812593016974588e-16, 1.1866922547516003e-18};
    // Two interleaved sums for the small terms halve the latency; the large ones end as in Horner.
    static_assert(std::size(kCoefficients) % 2 == 0);
    const double square = a * a;
    double even = 0.0;
    double odd = 0.0;
    for (int i = static_cast<int>(std::size(kCoefficients)) - 2; i >= 2; i -= 2) {
        even = even * square + kCoefficients[i];
        odd = odd * square + kCoefficients[i + 1];
    }
    const double h = ((odd * a + even) * a + kCoefficients[1]) * a + kCoefficients[0];
    return -h / (1.0 + a * h);
}

}  // namespace

double expm1_accurate(double x) {
    if (x < kLogUnderflow || x > kLogOverflow) {
        errno = EDOM;
        return -kLargestDouble;
    }
    errno = 0;
    if (std::fabs(x) <= 0.01) {
        double sum = 1.0 + x / 9.0;
        for (int k = 8; k >= 2; --k) {
            sum = 1.0 + x / k * sum;
        }
        return x * sum;
    }
    return std::exp(x) - 1.0;
}

void gamma_log_density(double a, double x, double* out) {
    const double r = log_ratio(x, a, [a] { return std::log(a); });
    *out = log_density_from(x, a, r, stirling_remainder(a));
}

GammaShape::GammaShape(double a)
    : m_a(a), m_isValid(a == a && a >= kSmallestShape && a <= kLargestShape) {}

GammaShape GammaShape::prepared(double a) {
    const GammaShape shape(a);
    if (shape.m_isValid) {
        shape.log_a();
        shape.log_gamma_1();
        shape.remainder();
        if (a < kSmallShape) {
            shape.small_switch_point();
        }
        if (a < 1.0) {
            shape.gamma();
            shape.gamma_excess();
        }
    }
    return shape;
}

double GammaShape::log_a() const {
    return once(m_logA, [this] { return std::log(m_a); });
}

double GammaShape::log_gamma_1() const {
    return once(m_logGamma1, [this] { return lgamma_stirling(m_a + 1.0); });
}

double GammaShape::remainder() const {
    return once(m_remainder, [this] {
        return m_a <= kQuickShape ? stirling_remainder(m_a, log_gamma_1())
                                  : stirling_remainder(m_a);
    });
}

double GammaShape::small_switch_point() const {
    return once(m_switchPoint, [this] {
        const double logSwitchPoint = (log_gamma_1() - kLn2) / m_a;
        return logSwitchPoint >= kLogUnderflow ? std::exp(logSwitchPoint) : 0.0;
    });
}

double GammaShape::gamma() const {
    return once(m_gamma, [this] { return gamma_stirling(m_a); });
}

double GammaShape::gamma_excess() const {
    return once(m_gammaExcess, [this] { return gamma_minus_reciprocal(m_a); });
}

bool GammaShape::is_lower(double x) const {
    if (m_a >= kSmallShape) {
        return x <= m_a - 1.0 / 3.0;
    }
    return x <= kLargestSmallSwitchPoint && x <= small_switch_point();
}

double GammaShape::log_density(double x) const {
    const double r = log_ratio(x, m_a, [this] { return log_a(); });
    return log_density_from(x, m_a, r, remainder());
}

void GammaShape::pq(double x, double* P, double* Q, double* f) const {
    enter_kernel("gamma_df");
    error_channel.kernel_path_code = 0;
    error_channel.kernel_iterations = 0;
    if (!m_isValid || x != x || x < 0.0) {
        raise_level(kInvalidArgument, "gamma_df");
        return;
    }
    double density = 0.0;
    if (x < kUnderflow) {
        *P = 0.0;
        *Q = 1.0;
        error_channel.kernel_path_code = 1;
    } else if (x > kLargestArgument) {
        *P = 1.0;
        *Q = 0.0;
        error_channel.kernel_path_code = 2;
    } else {
        density = tails(x, f != nullptr, P, Q);
        name_kernel("gamma_df");
    }
    if (f != nullptr) {
        *f = density;
    }
}

double GammaShape::tails(double x, bool isDensityWanted, double* P, double* Q) const {
    const bool isLower = is_lower(x);
    const bool isSmallShape = !isLower && m_a < 1.0 && x < 1.0;
    const double logDensity = isDensityWanted || !isSmallShape ? log_density(x) : 0.0;
    const bool isDensityNeeded = isDensityWanted || !(isLower || isSmallShape);
    const double density =
        isDensityNeeded && logDensity >= kLogUnderflow ? std::exp(logDensity) : 0.0;
    if (isLower) {
        lower_series(x, logDensity, P, Q);
    } else if (isSmallShape) {
        small_shape_series(x, P, Q);
    } else {
        upper_function(x, logDensity, density, P, Q);
    }
    return density;
}

namespace {

/// Gamma(a, x) for 0 <= a < 1 and x < 1 as excess + (1 - x^a) / a + an alternating series, where
/// excess is Gamma(a) - 1/a.
double upper_gamma_small_from(double x, double a, double excess) {
    const double logX = std::log(x);
    // (1 - x^a) / a; the test is that of |ln x| against a quotient by a, which may be 0.
    const bool isLimit = std::fabs(logX) * a < kUnderflow;
    const double powerMinusOne = isLimit ? a * logX : expm1_accurate(a * logX);
    const double leading = isLimit ? -logX : -powerMinusOne / a;
    double term = (x + x * powerMinusOne) / (a + 1.0);
    double sum = term;
    int n = 1;
    while (std::fabs(term) > kGammaTermTolerance && n < kMaxSmallShapeTerms) {
        ++n;
        term *= -x / n * (n + a - 1.0) / (n + a);
        sum += term;
    }
    error_channel.kernel_iterations = n;
    return excess + leading + sum;
}

/// The tail that was computed, and its complement.
void write_tail(double value, double* tail, double* other) {
    *tail = value;
    *other = 1.0 - value;
}

/// A tail below the underflow threshold: 0, with a warning and the branch that found it.
void write_vanished(int pathCode, double* tail, double* other) {
    write_tail(0.0, tail, other);
    error_channel.kernel_error_level = kWarning;
    error_channel.kernel_path_code = pathCode;
}

}  // namespace

void GammaShape::lower_series(double x, double logDensity, double* P, double* Q) const {
    // ln of x^a e^(-x) / Gamma(a + 1)
    const double logPrefactor = std::log(x / m_a) + logDensity;
    const bool isRepresentable = logPrefactor >= kLogUnderflow;
    if (!isRepresentable && logPrefactor - std::log(1.0 - x / (m_a + 1.0)) < kLogUnderflow) {
        write_vanished(20, P, Q);  // even the bound of the sum underflows
        return;
    }
    double S = 1.0;
    const int failure = gamma_Iax(m_a, x, &S);
    if (isRepresentable) {
        write_tail(std::exp(logPrefactor) * S, P, Q);
        error_channel.kernel_path_code = 10;
    } else {
        const double logP = std::log(S) + logPrefactor;
        if (logP < kLogUnderflow) {
            write_vanished(30, P, Q);
        } else {
            write_tail(std::exp(logP), P, Q);
            error_channel.kernel_path_code = 40;
        }
    }
    if (failure != 0) {
        raise_level(kNoConvergence, "gamma_df");
    }
}

void GammaShape::small_shape_series(double x, double* P, double* Q) const {
    const double g = upper_gamma_small_from(x, m_a, gamma_excess());
    const double q = g / gamma();
    // Only a shape near the smallest double can underflow: no logarithms elsewhere.
    const bool vanishes = q < 1e-280 && std::log(g) - lgamma_stirling(m_a) < kLogUnderflow;
    write_tail(vanishes ? 0.0 : q, Q, P);
    error_channel.kernel_path_code = 50;
}

void GammaShape::upper_function(double x, double logDensity, double density, double* P,
                                double* Q) const {
    const bool isRepresentable = logDensity >= kLogUnderflow;
    if (!isRepresentable) {
        if (m_a <= 1.0) {
            write_vanished(70, Q, P);
            return;
        }
        if (logDensity - std::log(1.0 - (m_a - 1.0) / x) < kLogUnderflow) {
            write_vanished(80, Q, P);
            return;
        }
    }
    double J = 1.0;
    const int failure = gamma_Jax(m_a, x, &J);
    const int innerPathCode = error_channel.kernel_path_code;
    if (isRepresentable) {
        write_tail(J * density, Q, P);
        error_channel.kernel_path_code = innerPathCode + 60;
    } else {
        const double logQ = std::log(J) + logDensity;
        if (logQ < kLogUnderflow) {
            write_vanished(innerPathCode + 90, Q, P);
        } else {
            write_tail(std::exp(logQ), Q, P);
            error_channel.kernel_path_code = innerPathCode + 100;
        }
    }
    if (failure != 0) {
        raise_level(kNoConvergence, "gamma_df");
    }
}

namespace {

/// The shapes 1/2, 1, 3/2, ..., as many as the sequence is long.
template <std::size_t... index>
std::array<GammaShape, sizeof...(index)> prepared_shapes(
    std::index_sequence<index...> /*indices*/) {
    return {GammaShape::prepared(0.5 * (index + 1))...};
}

}  // namespace

GammaShape gamma_shape(double a) {
    // Built at first use, so that a caller's own start-up code may already compute.
    static const auto prepared =
        prepared_shapes(std::make_index_sequence<static_cast<std::size_t>(2.0 * kQuickShape)>());
    const GammaShape shape(a);
    if (shape.is_valid() && a <= kQuickShape) {
        const double twice = 2.0 * a;
        const auto whole = static_cast<std::size_t>(twice);
        if (whole >= 1 && static_cast<double>(whole) == twice) {
            return prepared[whole - 1];
        }
    }
    return shape;
}

void gamma_pq(double x, double a, double* P, double* Q, double* f) {
    gamma_shape(a).pq(x, P, Q, f);
}

namespace {

/// Up to here the rounding errors of the terms leave a forward sum within 5 ulps of the backward
/// one. Beyond, the errors of both grow, and a defined result is the backward one.
constexpr double kLargestForwardSum = 8.0;

/// Terms added largest first; the rounding errors of the additions are put back at the end.
class ForwardSum {
public:
    void add(double term) {
        const DoubleDouble sum = quick_two_sum(m_sum, term);
        m_sum = sum.hi;
        m_lost += sum.lo;
    }
    double value() const { return m_sum + m_lost; }

private:
    double m_sum = 0.0;
    double m_lost = 0.0;
};

}  // namespace

int gamma_Iax(double a, double x, double* S) {
    double term = 1.0;
    double n = 0.0;
    ForwardSum forward;
    while (term >= kGammaTermTolerance && n <= kMaxTerms) {
        forward.add(term);
        n += 1.0;
        term *= x / (n + a);
    }
    if (n > kMaxTerms) {
        raise_level(kNoConvergence, "gamma_Iax");
        return kNoConvergence;
    }
    forward.add(term);
    double sum = forward.value();
    if (sum > kLargestForwardSum) {
        sum = 1.0;
        for (double k = n; k >= 1.0; k -= 1.0) {
            sum = x * sum / (k + a) + 1.0;
        }
    }
    *S = sum;
    clear_negative_level("gamma_Iax");
    return 0;
}

int gamma_Jax(double a, double x, double* J) {
    double term = 1.0;
    double k = 0.0;
    ForwardSum forward;
    while (term >= kGammaTermTolerance && k <= a - 1.0 && k <= kMaxTerms) {
        forward.add(term);
        k += 1.0;
        term *= (a - k) / x;
    }
    if (k > kMaxTerms) {
        raise_level(kNoConvergence, "gamma_Jax");
        return kNoConvergence;
    }
    double sum = 1.0;
    if (term >= kGammaTermTolerance) {
        k = std::floor(a);
        if (gamma_cf(x, a - k, &sum) != 0) {
            raise_level(kNoConvergence, "gamma_Jax");
            return kNoConvergence;
        }
    } else {
        error_channel.kernel_path_code = 0;
    }
    forward.add(term * sum);
    if (forward.value() <= kLargestForwardSum) {
        sum = forward.value();
    } else {
        for (; k >= 1.0; k -= 1.0) {
            sum = (a - k) * sum / x + 1.0;
        }
    }
    *J = sum;
    clear_negative_level("gamma_Jax");
    return 0;
}

int gamma_cf(double x, double b, double* J) {
    if (x < 1.0) {
        *J = upper_gamma_small(x, b) * std::pow(x, 1.0 - b) * std::exp(x);
        error_channel.kernel_path_code = 2;
        return 0;
    }
    // Two interleaved sequences of convergents bracket the value.
    double A = 0.0;
    double B = 1.0;
    double C = 1.0;
    double D = 1.0;
    for (int n = 1; n <= kMaxFractionSteps; ++n) {
        A = (n - b) * A + x * B;
        D = (n - b) * D + x * C;
        B = n * B + A;
        C = n * C + D;
        // Cross-multiplied, a gap clearly above the tolerance shows without divisions.
        if (B * D - A * C > 1.001 * kGammaTermTolerance * (A * C)) {
            continue;
        }
        const double lower = A / D;
        const double upper = B / C;
        if ((upper - lower) / lower < kGammaTermTolerance) {
            *J = (lower + upper) / 2.0;
            error_channel.kernel_path_code = 1;
            error_channel.kernel_iterations = n;
            return 0;
        }
    }
    return kNoConvergence;
}

double upper_gamma_small(double x, double a) {
    return upper_gamma_small_from(x, a, gamma_minus_reciprocal(a));
}

}  // namespace vela::kernels
