// Noncentral t by quadrature over the scale S = sqrt(chi2 / df).
//
// Both tails and the density are integrals of positive functions,
//     P(T > t) = E[Phi(delta - t S)], P(T <= t) = E[Phi(t S - delta)] and E[S phi(t S - delta)],
// so no digit is lost to cancellation. The mixtures of beta probabilities (Benton & Krishnamoorthy,
// 2003) have terms of both signs where t and delta have opposite signs, and take about 11 |delta|
// terms each; the integral takes 30 to 60 nodes, a few hundred where df is far below 1.
//
// With S = s0 e^v the integrand is, up to a constant, exp(df (v - s0^2 e^2v / 2)) times the normal
// factor. It is analytic, so the trapezoidal rule in x, v = c sinh(x), converges exponentially
// (Trefethen & Weideman, 2014). s0 lies at the integrand's peak, c is a few of its widths: the bulk
// sees nearly equal steps, and the long tails (e^(df v) on the left) cost only a logarithm.
// Where the normal factor falls from 1 to 0 within a small part of the spread of S (t much larger
// than sqrt(2 df)), s0 lies at that step instead, and c is its width.
//
// Exponents: v - (e^2v - 1) / 2 is formed as -(e^v - 1 - v) - (e^v - 1)^2 / 2, and s0 = 1 + e0 with
// an e0 of 26 bits, so that t s0 - delta can be had without rounding. Otherwise the digits of a
// large df or delta would be lost in the exponent.

#include "kernels/noncentral_t_integral.hpp"

#include "kernels/beta_mills.hpp"
#include "kernels/double_double.hpp"

#include <algorithm>
#include <cmath>

namespace vela::kernels {
namespace {

constexpr double kSqrtHalf = 0.7071067811865476;
constexpr double kInvSqrt2Pi = 0.3989422804014327;
constexpr double kInvSqrtPi = 0.5641895835477563;

// From here on the upper tail is t^-df times a constant to far more than double precision, and s0
// would come near the denormal numbers.
constexpr double kPowerLaw = 1e200;

constexpr double kNormalDf = 1e25;     // above it S is 1 for every delta accepted
constexpr double kNormalReach = 40.0;  // normal tails are 0 beyond

enum class Part { kUpper, kLower, kDensity };

// ---------------------------------------------------------------- normal distribution

/// P(Z > y) / exp(-y^2 / 2) for y >= 0.
double scaled_upper_tail(double y) {
    constexpr double endOfMillsRatio = 45.0;
    if (y <= endOfMillsRatio) {
        return kInvSqrt2Pi * mills_ratio(y);
    }
    const double w = 1.0 / y / y;
    return kInvSqrt2Pi * (1.0 + w * (-1.0 + w * (3.0 - 15.0 * w))) / y;
}

// ---------------------------------------------------------------- chi distribution

/// exp(-r) with r the remainder of Stirling's series for ln Gamma(a), a >= 8.
double stirling_factor(double a) {
    const double w = 1.0 / a / a;
    const double series =
        1.0 / 12.0 + w * (-1.0 / 360.0 +
                          w * (1.0 / 1260.0 +
                               w * (-1.0 / 1680.0 + w * (1.0 / 1188.0 + w * (-691.0 / 360360.0 +
                                                                             w * (1.0 / 156.0))))));
    return std::exp(-series / a);
}

/// The density of ln S at S = 1, 2 a^a e^-a / Gamma(a) with a = df / 2. Below 8 the argument of
/// Gamma is raised by its recurrence.
double chi_density_constant(double df) {
    constexpr int shift = 8;
    const double a = 0.5 * df;
    if (a >= shift) {
        return kInvSqrtPi * std::sqrt(df) * stirling_factor(a);
    }
    const double top = a + shift;
    double product = std::exp(static_cast<double>(shift));
    for (int i = 0; i < shift; ++i) {
        product *= (a + i) / top;
    }
    return 2.0 * kInvSqrt2Pi * product * std::pow(a / top, a) * std::sqrt(top) *
           stirling_factor(top);
}

/// (s^2 - 1) / 2 - ln s: how far the log-density of ln S lies below its peak; e is s - 1.
double chi_deviance(double s, double e) {
    if (std::fabs(e) >= 0.25) {
        return 0.5 * e * (s + 1.0) - std::log(s);
    }
    // ln(1 + e) = 2 artanh(z), z = e / (2 + e); e = z (2 + e) leaves z e of the first term.
    const double z = e / (2.0 + e);
    const double w = z * z;
    double sum = 0.0;
    for (int k = 19; k >= 3; k -= 2) {
        sum = (sum + 1.0 / k) * w;
    }
    return 0.5 * e * e + z * (e - 2.0 * sum);
}

// ---------------------------------------------------------------- placing the nodes

/// Where the sum is centred and how wide it is.
struct Frame {
    double s0 = 1.0;     // the value of S at v = 0
    double e0 = 0.0;     // s0 - 1
    double ts0 = 0.0;    // t s0
    double y0 = 0.0;     // argument of the normal factor at v = 0
    double scale = 1.0;  // c in v = c sinh(x)
};

/// The positive root s of (df + t^2) s^2 - t delta s - weight = 0: the peak of
/// s^weight exp(-df s^2 / 2 - (t s - delta)^2 / 2). No square of a large t is formed.
double gaussian_peak(double t, double df, double delta, double weight) {
    const double unit = std::max(t, 1.0);
    const double b = t / unit * delta;
    const double a = df / unit + t / unit * t;  // coefficients divided by max(t, 1)
    const double root = std::sqrt(b * b + 4.0 * a * (weight / unit));
    return b > 0.0 ? 0.5 * (b + root) / a : 2.0 * (weight / unit) / (root - b);
}

/// The peak of s^weight exp(-df s^2 / 2) Phi(sign (delta - t s)), sign = 1 for the upper tail and
/// -1 for the lower one. A tenth of the peak's width is near enough, so phi / Phi is replaced by an
/// algebraic function which agrees with it at 0 and towards the tail.
double tail_peak(double t, double df, double delta, double weight, double sign) {
    double s = gaussian_peak(t, df, delta, weight);
    for (int i = 0; i < 8; ++i) {
        const double ts = t * s;
        const double y = sign * (ts - delta);
        constexpr double eightOverPi = 2.5464790894703255;
        const double root = std::sqrt(y * y + eightOverPi);
        const double ratio = y > 0.0 ? 0.5 * (y + root) : 0.5 * eightOverPi / (root - y);
        const double slope = weight - df * s * s - sign * ts * ratio;
        const double curvature = 2.0 * df * s * s + sign * ts * ratio + ts * ts * ratio / root;
        const double width2 = std::max(curvature, weight + df * s * s);
        const double step = std::clamp(slope / width2, -1.0, 1.0);
        s *= 1.0 + step * (1.0 + 0.5 * step);
        if (step * step * width2 < 0.01) {
            break;
        }
    }
    return s;
}

/// a + t b for a b of at most 26 bits, rounded at the end only.
double exact_sum(DoubleDouble a, double t, double b) {
    const double tHead = leading_half(t);
    const DoubleDouble sum = two_sum(a.hi, tHead * b);
    const DoubleDouble rest = two_sum(sum.hi, (t - tHead) * b);
    return rest.hi + (rest.lo + (sum.lo + a.lo));
}

/// Sets s0, near s, and what follows from it.
void place_centre(Frame& frame, double s, double t, double delta) {
    if (std::fabs(s - 1.0) < 0.5) {
        frame.e0 = leading_half(s - 1.0);
        frame.s0 = 1.0 + frame.e0;
        frame.y0 = exact_sum(two_sum(t, -delta), t, frame.e0);
    } else {
        frame.s0 = leading_half(s);
        frame.e0 = frame.s0 - 1.0;
        frame.y0 = exact_sum({-delta, 0.0}, t, frame.s0);
    }
    frame.ts0 = t * frame.s0;
}

Frame make_frame(double t, double df, double delta, Part part) {
    // Below df = 1 the peak in ln S may lie far out in the flat left tail; the knee on its right is
    // what the nodes must resolve, and weight 1 finds it.
    const double weight = std::max(df, 1.0);
    const double sign = part == Part::kUpper ? 1.0 : -1.0;
    double s = part == Part::kDensity ? gaussian_peak(t, df, delta, df + 1.0)
                                      : tail_peak(t, df, delta, weight, sign);
    // The step's width in ln S is 1 / delta, that of S itself 1 / sqrt(2 df).
    const bool stepIsSharp = delta > 0.0 && delta > 1.5 * std::sqrt(2.0 * df);
    if (part != Part::kDensity && stepIsSharp && t > 0.0) {
        const double step = delta / std::max(t, 1e-300);
        s = part == Part::kUpper ? std::max(s, step) : std::min(s, step);
    }
    Frame frame;
    place_centre(frame, s, t, delta);
    if (part == Part::kLower) {
        frame.y0 = -frame.y0;
    }
    const double curvature = weight + df * frame.s0 * frame.s0 + frame.ts0 * frame.ts0;
    frame.scale = std::min(7.0 / std::sqrt(curvature), 1.0);
    return frame;
}

// ---------------------------------------------------------------- the sum

/// One integrand with everything that does not depend on the node.
struct Integrand {
    Frame frame;
    double df = 0.0;
    double slope = 0.0;      // df (1 - s0^2)
    double reference = 0.0;  // part of the exponent that the sum leaves out

    template <Part part>
    double at(double v) const;
};

/// e^v - 1 and e^v - 1 - v without cancellation.
struct Growth {
    double m;
    double excess;
};

// 1 / 13!, ..., 1 / 2!
constexpr double kInverseFactorials[] = {1.0 / 6227020800.0, 1.0 / 479001600.0, 1.0 / 39916800.0,
                                         1.0 / 3628800.0,    1.0 / 362880.0,    1.0 / 40320.0,
                                         1.0 / 5040.0,       1.0 / 720.0,       1.0 / 120.0,
                                         1.0 / 24.0,         1.0 / 6.0,         1.0 / 2.0};

Growth growth(double v) {
    if (std::fabs(v) < 0.25) {
        double sum = 0.0;
        for (const double c : kInverseFactorials) {
            sum = sum * v + c;
        }
        const double excess = v * v * sum;
        return {v + excess, excess};
    }
    const double m = std::exp(v) - 1.0;
    return {m, m - v};
}

/// The integrand at S = s0 e^v relative to exp(reference) of its constant.
template <Part part>
double Integrand::at(double v) const {
    const auto [m, excess] = growth(v);
    const double chi = m * (1.0 + 0.5 * m) * slope - df * (excess + 0.5 * m * m);
    const double dy = part == Part::kLower ? -frame.ts0 * m : frame.ts0 * m;
    const double y = frame.y0 + dy;
    // (y^2 - y0^2) / 2 in its factored form; reference is y0^2 / 2 or 0.
    const double half = reference > 0.0 ? dy * (frame.y0 + 0.5 * dy) : 0.5 * y * y;
    if constexpr (part == Part::kDensity) {
        return std::exp(std::min(chi - half, 700.0)) * (1.0 + m);
    }
    if (y > 0.0) {
        return std::exp(std::min(chi - half, 700.0)) * scaled_upper_tail(y);
    }
    const double body = std::exp(std::min(chi + reference, 700.0));
    constexpr double certain = -8.5;  // below it the normal factor is 1
    return y < certain ? body : body * (0.5 * std::erfc(kSqrtHalf * y));
}

/// Sum of cosh(x) * integrand over x = h, 2h, ... in one direction.
template <Part part>
double one_sided_sum(const Integrand& integrand, double direction, double h, double reach,
                     double centre) {
    constexpr int maxNodes = 4000;  // beyond what the smallest df accepted needs
    const double ratio = std::exp(h);
    const double inverseRatio = std::exp(-h);
    const double c = 0.5 * direction * integrand.frame.scale;
    double up = 1.0;
    double down = 1.0;
    double sum = 0.0;
    for (int k = 0; k < maxNodes; ++k) {
        up *= ratio;
        down *= inverseRatio;
        const double v = c * (up - down);
        if (v > 300.0) {
            break;
        }
        const double term = 0.5 * (up + down) * integrand.at<part>(v);
        sum += term;
        if (!(term > 1e-17 * (centre + sum)) && std::fabs(v) >= reach) {
            break;
        }
    }
    return sum;
}

/// C integral of the part over ln S.
template <Part part>
double integrate(double t, double df, double delta) {
    Integrand integrand;
    integrand.frame = make_frame(t, df, delta, part);
    const Frame& frame = integrand.frame;
    integrand.df = df;
    integrand.slope = -df * frame.e0 * (2.0 + frame.e0);
    if (part == Part::kDensity || frame.y0 > 0.0) {
        integrand.reference = 0.5 * frame.y0 * frame.y0;
    }
    const double exponent = -df * chi_deviance(frame.s0, frame.e0) - integrand.reference;
    // The sum over the nodes is near 1 by the choice of s0, so this is 0 whatever it is; and the
    // cancelling exponents of the nodes would have no digits left.
    constexpr double hopeless = -800.0;
    if (exponent < hopeless) {
        return 0.0;
    }
    // Found by experiment: at these the truncation error drops below 1e-13.
    const double h = df < 1.0 ? 0.045 : 0.07;
    // Left of here S^df leaves nothing. A lower tail with df < 1 may dip on its way there, so the
    // size of a term says nothing before.
    const double reach = df < 1.0 ? 40.0 / df : 0.0;
    const double centre = integrand.at<part>(0.0);
    const double sum = centre + one_sided_sum<part>(integrand, 1.0, h, 0.0, centre) +
                       one_sided_sum<part>(integrand, -1.0, h, reach, centre);
    const double factor = part == Part::kDensity ? kInvSqrt2Pi * frame.s0 : 1.0;
    return chi_density_constant(df) * frame.scale * h * factor * sum * std::exp(exponent);
}

}  // namespace

double normal_upper_tail(double y) {
    if (y <= 0.0) {
        return 0.5 * std::erfc(kSqrtHalf * y);
    }
    return y < kNormalReach ? std::exp(-0.5 * y * y) * scaled_upper_tail(y) : 0.0;
}

double normal_density(double y) {
    return std::fabs(y) < kNormalReach ? kInvSqrt2Pi * std::exp(-0.5 * y * y) : 0.0;
}

TailPair noncentral_t_tails(double t, double df, double delta) {
    if (df > kNormalDf) {
        return {normal_upper_tail(delta - t), normal_upper_tail(t - delta)};
    }
    if (t > kPowerLaw) {
        const double upper =
            integrate<Part::kUpper>(kPowerLaw, df, delta) * std::pow(t / kPowerLaw, -df);
        return {1.0 - upper, upper};
    }
    // Nearly all of S lies below 1 / sqrt(df) when df is small: up to there the lower tail has two
    // features far apart, the step and the end of S, and is left to the complement.
    const double split = std::max(1.0, std::sqrt(0.05 / df));
    if (delta > 0.0 && delta / split > t) {
        const double lower = integrate<Part::kLower>(t, df, delta);
        return {lower, 1.0 - lower};
    }
    const double upper = integrate<Part::kUpper>(t, df, delta);
    return {1.0 - upper, upper};
}

double noncentral_t_density(double t, double df, double delta) {
    if (df > kNormalDf) {
        return normal_density(t - delta);
    }
    if (t > kPowerLaw) {
        const double ratio = t / kPowerLaw;
        return integrate<Part::kDensity>(kPowerLaw, df, delta) * std::pow(ratio, -df) / ratio;
    }
    return integrate<Part::kDensity>(t, df, delta);
}

}  // namespace vela::kernels
