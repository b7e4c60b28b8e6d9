// Regularized incomplete beta function I_x(a, b), both tails to a few units of the last place.
// Didonato & Morris (1992) choose among series, fraction and expansions by region; so does this
// kernel, with bounds of its own and one prefactor for all regions:
//
//   G = x^a y^b / B(a, b) = sqrt(a b / (2 pi (a + b))) Gs(a + b) / (Gs(a) Gs(b)) exp(-E),
//   E = a d(u) + b d(v),  d(u) = u - 1 - ln u,  u = x (a + b) / a,  v = y (a + b) / b,
//
// where Gs is the gamma function over Stirling's formula. E is a sum of positive terms, exact in
// two doubles; log-gamma differences would cost shapes of 1e6 seven digits. Where a + b < 12 there
// is nothing to cancel, and G is x^a y^b Gamma(a + b) / (Gamma(a) Gamma(b)) as it stands.
//
// One tail is computed, the other is its complement:
//   b <= 1, x <= 0.7            power series (beta_Iabx)
//   b <= 1, x > 0.7             a lifted above 15 by the recurrence, then incomplete gamma
//                               functions (section 9 of the paper)
//   a <= 1 < b, x (a + b) small power series
//   a, b > 1                    normal-tail expansion where both are large and the point is near
//                               the mean, else power series where short, else continued fraction
// With both shapes above 1 the tail away from the mean is the small one. With a shape below 1 the
// small tail is not known beforehand: when the computed one exceeds kComplementLimit, or is seen to
// from the start, the other is computed by itself.

#include "kernels/beta.hpp"

#include "conventions/error_channel.hpp"
#include "kernels/beta_expansions.hpp"
#include "kernels/beta_gamma.hpp"
#include "kernels/beta_log.hpp"
#include "kernels/limits.hpp"

#include <algorithm>
#include <cmath>

namespace vela::kernels {
namespace {

using conventions::enter_kernel;
using conventions::kArgumentTooLarge;
using conventions::kInvalidArgument;
using conventions::kNoConvergence;
using conventions::kWarning;
using conventions::raise_level;

constexpr double kTwoPi = 6.283185307179586;
constexpr double kSmallestShape = 1e-150;
constexpr double kLargestShape = 1e150;
constexpr double kDirectTotal = 12.0;  // a + b below which gamma functions are used as they are
constexpr double kMismatch = 1e-8;     // x + y further from 1 is a caller's mistake
constexpr double kSeriesTolerance = 2.8e-17;  // the terms left out add up to a few times this
constexpr double kSeriesBound = 0.7;          // x up to which a series with ratio x is short enough
constexpr double kLiftedShape = 15.0;         // a from which the gamma expansion holds 1e-16
constexpr double kComplementLimit = 0.9;      // a computed tail above this has lost a digit below
constexpr double kNoDoubleLeft = 700.0;       // exp(-this) times any factor here is a tail of 0
constexpr int kMaxTerms = 1'000'000;
constexpr int kMaxFractionSteps = 100'000;

/// One tail I_x(a, b) to be computed: the shapes and the point, exchanged for the upper tail.
struct Side {
    double a, b;
    double x, y;
    double margin;       // a y - b x
    double exponential;  // 0 where no double is left
    double deviance;     // E
    double scale;

    Side mirrored() const { return {b, a, y, x, -margin, exponential, deviance, scale}; }
};

/// a (d - ln(1 + d)) for d = w / a > -1, where 1 + d = u is also given in case d is near -1.
DoubleDouble deviance_part(double a, DoubleDouble w, DoubleDouble coordinate, DoubleDouble total) {
    const DoubleDouble d = w / a;
    if (d.hi >= -0.5) {
        return log1p_deficit(d) * a;
    }
    return (d - log_two_doubles(coordinate * total / a)) * a;
}

/// Lifts a by n: I_x(a, b) = I_x(a + n, b) + G / a * (*partial), G(a + n) = G(a) * (*growth).
void lift(const Side& side, int n, double* partial, double* growth) {
    double term = 1.0;
    double sum = 0.0;
    double prefactor = 1.0;
    for (int k = 0; k < n; ++k) {
        sum += term;
        prefactor *= side.x * ((side.a + side.b + k) / (side.a + k));
        term *= side.x * ((side.a + side.b + k) / (side.a + (k + 1)));
    }
    *partial = sum;
    *growth = prefactor;
}

/// The factor by which side.exponential makes I_x(a, b), for a side with b <= 1 and x > 0.7.
double small_b_factor(const Side& side) {
    if (side.a >= kLiftedShape) {
        return side.scale * gamma_expansion(side.a, side.b, side.y);
    }
    double partial = 0.0;
    double growth = 1.0;
    const int n = static_cast<int>(kLiftedShape - side.a) + 1;
    lift(side, n, &partial, &growth);
    const double rest = gamma_expansion(side.a + n, side.b, side.y);
    return side.scale * (partial / side.a + growth * rest);
}

bool large_and_near_mean(const Side& side) {
    const double smaller = std::fmin(side.a, side.b);
    return smaller >= 40.0 && side.deviance <= 0.1 * smaller && side.deviance <= 12.0;
}

/// The factor by which side.exponential makes I_x(a, b); 0 or 4.
int tail_factor(const Side& side, double* factor) {
    if (side.b <= 1.0 && side.x > kSeriesBound) {
        *factor = small_b_factor(side);
        return 0;
    }
    const double ratio = side.x * (side.a + side.b) / (side.a + 1.0);
    if (side.a <= 1.0 || side.b <= 1.0 || ratio <= 0.3) {
        double S = 0.0;
        const int status = beta_Iabx(side.a, side.b, side.x, &S);
        *factor = side.scale / side.a * S;
        return status;
    }
    if (large_and_near_mean(side)) {
        double sum = 0.0;
        if (large_shapes_expansion(side.a, side.b, side.deviance, &sum)) {
            // G without sqrt(a b / (a + b)), which the sum has absorbed
            *factor = sum * side.scale / std::sqrt(side.a / (side.a + side.b) * side.b);
            return 0;
        }
    }
    double J = 0.0;
    const int status = beta_Jabx(side.a, side.b, side.x, side.y, side.margin, &J);
    *factor = side.scale * J;
    return status;
}

/// Whether the lower tail is the one to compute first.
bool lower_first(const Side& side) {
    if (side.a > 1.0 && side.b > 1.0) {
        return side.margin >= 0.0;
    }
    if (side.a <= 1.0 && side.b <= 1.0) {
        return side.x <= side.y;
    }
    const double total = side.a + side.b;
    return side.a <= 1.0 ? side.x <= 0.5 && side.x * total <= 1.5
                         : side.y > 0.5 || side.y * total > 1.5;
}

bool compute_tail(const Side& side, double* tail) {
    if (side.exponential == 0.0) {
        *tail = 0.0;
        return true;
    }
    double factor = 0.0;
    const int status = tail_factor(side, &factor);
    *tail = side.exponential * factor;
    return status == 0;
}

}  // namespace

int beta_Iabx(double a, double b, double x, double* S) {
    // Forward only to count the terms, then backward, smallest first. The first ratios are kept:
    // a division each is most of the work.
    constexpr int kept = 64;
    double ratios[kept];
    double term = 1.0;
    int n = 0;
    while (term >= kSeriesTolerance && n <= kMaxTerms) {
        const double ratio = x * ((a + b + n) / (a + 1.0 + n));
        if (n < kept) {
            ratios[n] = ratio;
        }
        term *= ratio;
        ++n;
    }
    double sum = 1.0;
    for (int k = n - 1; k >= kept; --k) {
        sum = sum * (x * ((a + b + k) / (a + 1.0 + k))) + 1.0;
    }
    for (int k = std::min(n, kept) - 1; k >= 0; --k) {
        sum = sum * ratios[k] + 1.0;
    }
    *S = sum;
    if (n > kMaxTerms) {
        raise_level(kNoConvergence, "beta_Iabx");
        return kNoConvergence;
    }
    return 0;
}

int beta_Jabx(double a, double b, double x, double y, double margin, double* J) {
    // Numerators and denominators of the convergents carried forward; no division is in the chain.
    double numerator = 1.0;
    double previousNumerator = 0.0;
    double denominator = a * (margin + 1.0) / (a + 1.0);
    double previousDenominator = 1.0;
    int status = kNoConvergence;
    double reciprocal = 1.0 / (a + 1.0);
    for (int step = 1; step < kMaxFractionSteps; ++step) {
        const double n = step;
        const double share = x * n * (b - n) * reciprocal;
        const double alpha = x * ((a + (n - 1.0)) * ((a + b + (n - 1.0)) * reciprocal)) * share;
        reciprocal = 1.0 / (a + (2.0 * n + 1.0));
        const double beta = n + share + (a + n) * reciprocal * (margin + 1.0 + n * (1.0 + y));
        const double nextNumerator = beta * numerator + alpha * previousNumerator;
        const double nextDenominator = beta * denominator + alpha * previousDenominator;
        const double cross = nextNumerator * denominator;
        const double change = cross - numerator * nextDenominator;
        previousNumerator = numerator;
        previousDenominator = denominator;
        numerator = nextNumerator;
        denominator = nextDenominator;
        if (!(std::fabs(change) > 2e-16 * std::fabs(cross))) {
            status = 0;
            break;
        }
        if (std::fabs(denominator) > 1e100) {
            const double down = 1.0 / denominator;
            numerator *= down;
            previousNumerator *= down;
            previousDenominator *= down;
            denominator = 1.0;
        }
    }
    *J = numerator / denominator;
    if (status != 0) {
        raise_level(kNoConvergence, "beta_Jabx");
    }
    return status;
}

BetaPoint BetaPoint::from_doubles(double x, double y) {
    return x <= y ? BetaPoint{{x, 0.0}, two_sum(1.0, -x)} : BetaPoint{two_sum(1.0, -y), {y, 0.0}};
}

BetaPoint BetaPoint::from_ratio(DoubleDouble ratio) {
    const DoubleDouble sum = DoubleDouble{1.0, 0.0} + ratio;
    return {DoubleDouble{1.0, 0.0} / sum, ratio / sum};
}

BetaShapes::BetaShapes(double a, double b) : m_a(a), m_b(b), m_total(two_sum(a, b)) {
    // all of it symmetric in a and b to the last bit: exchanged arguments give exchanged tails
    const double reduced = std::fmin(a, b) / m_total.hi * std::fmax(a, b);
    m_direct = m_total.hi < kDirectTotal;
    if (m_direct) {
        // 1 / B(a, b) with Gamma(1 + a) / a for Gamma(a); the logarithm stands for the digamma
        // function, which the part of a + b that no double holds is multiplied with
        m_scale = reduced * (gamma_plus_one(m_total.hi) / (gamma_plus_one(a) * gamma_plus_one(b))) *
                  (1.0 + m_total.lo * std::log(m_total.hi + 0.5));
        return;
    }
    const ScaledGamma scaledA = scaled_gamma(a);
    const ScaledGamma scaledB = scaled_gamma(b);
    m_scale = std::sqrt(reduced / kTwoPi) / (scaledA.factor * scaledB.factor);
    m_logScale = scaled_gamma(m_total.hi).logPart - (scaledA.logPart + scaledB.logPart);
}

bool BetaShapes::tails(const BetaPoint& point, double* lower, double* upper) const {
    const DoubleDouble margin = point.y * m_a - point.x * m_b;
    double exponential = 0.0;
    double deviance = 0.0;
    if (m_direct) {
        exponential = std::pow(point.x.hi, m_a) * std::pow(point.y.hi, m_b);
    } else {
        const DoubleDouble e = deviance_part(m_a, -margin, point.x, m_total) +
                               deviance_part(m_b, margin, point.y, m_total);
        const DoubleDouble exponent = e - m_logScale;
        deviance = e.hi;
        exponential =
            exponent.hi > kNoDoubleLeft ? 0.0 : std::exp(-exponent.hi) * (1.0 - exponent.lo);
    }
    Side side{m_a, m_b, point.x.hi, point.y.hi, margin.hi, exponential, deviance, m_scale};
    bool lowerFirst = lower_first(side);
    if (!lowerFirst) {
        side = side.mirrored();
    }
    // the first term of its series already tells that this is not the small tail
    if (side.a <= 1.0 && exponential * (m_scale / side.a) > kComplementLimit) {
        side = side.mirrored();
        lowerFirst = !lowerFirst;
    }
    double tail = 0.0;
    double other = 0.0;
    bool converged = compute_tail(side, &tail);
    if (side.a <= 1.0 && tail > kComplementLimit) {
        converged = compute_tail(side.mirrored(), &other) && converged;
        tail = 1.0 - other;
    } else {
        other = 1.0 - tail;
    }
    if (tail < kUnderflow || other < kUnderflow) {
        raise_level(kWarning, "beta_df");
        tail = tail < kUnderflow ? 0.0 : tail;
        other = other < kUnderflow ? 0.0 : other;
    }
    *lower = lowerFirst ? tail : other;
    *upper = lowerFirst ? other : tail;
    return converged;
}

void beta_df(double x, double y, double a, double b, double* lower, double* upper) {
    enter_kernel("beta_df");
    *lower = *upper = kLargestDouble;
    if (x != x || y != y || a != a || b != b || x < 0.0 || y < 0.0 || x > 1.0 || y > 1.0 ||
        a <= 0.0 || b <= 0.0 || std::fabs((x - 0.5) + (y - 0.5)) > kMismatch) {
        raise_level(kInvalidArgument, "beta_df");
        return;
    }
    if (a < kSmallestShape || b < kSmallestShape || a > kLargestShape || b > kLargestShape) {
        raise_level(kArgumentTooLarge, "beta_df");
        return;
    }
    if (x == 0.0 || y == 0.0) {
        *lower = x == 0.0 ? 0.0 : 1.0;
        *upper = x == 0.0 ? 1.0 : 0.0;
        return;
    }
    if (!BetaShapes(a, b).tails(BetaPoint::from_doubles(x, y), lower, upper)) {
        *lower = *upper = kLargestDouble;
    }
}

}  // namespace vela::kernels
