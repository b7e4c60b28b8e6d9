// Regularized incomplete beta function I_x(a, b), both tails to a few units of the last place.
// Didonato & Morris (1992) choose among series, fraction and expansions by region; so does this
// kernel, with bounds of its own and the one factor G = x^a y^b / B(a, b) for all regions.
//
// One tail is computed, the other is its complement:
//   a = b = 1/2, b = 1          closed forms
//   b <= 1, x <= 0.7            power series (beta_Iabx)
//   b <= 1, x > 0.7             a lifted above 15 by the recurrence, then incomplete gamma
//                               functions (section 9 of the paper)
//   a <= 1 < b, x (a + b) small power series
//   a, b > 1                    the first of these that fits: binomial tail summed from its largest
//                               term, where b is whole or the sum ends before b; power series where
//                               short; normal-tail expansion where both shapes are large and the
//                               point is near the mean; continued fraction
// With both shapes above 1 the tail away from the mean is the small one; near the mean both are
// large, and the one with the shorter sum is computed. With a shape below 1 the
// small tail is not known beforehand: when the computed one exceeds kComplementLimit, or is seen to
// from the start, the other is computed by itself.

#include "kernels/beta.hpp"

#include "conventions/error_channel.hpp"
#include "kernels/beta_expansions.hpp"
#include "kernels/beta_gamma.hpp"
#include "kernels/limits.hpp"
#include "kernels/pair.hpp"

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

constexpr double kSmallestShape = 1e-150;
constexpr double kLargestShape = 1e150;
constexpr double kMismatch = 1e-8;            // x + y further from 1 is a caller's mistake
constexpr double kSeriesTolerance = 2.8e-17;  // the terms left out add up to a few times this
constexpr double kSeriesBound = 0.7;          // x up to which a series with ratio x is short enough
constexpr double kLiftedShape = 15.0;         // a from which the gamma expansion holds 1e-16
constexpr double kShortRatio = 0.3;           // of a series that is shorter than the fraction
constexpr double kComplementLimit = 0.9;      // a computed tail above this has lost a digit below
constexpr int kMaxTerms = 1'000'000;
constexpr int kMaxFractionSteps = 100'000;

/// One tail I_x(a, b) to be computed: the shapes and the point, exchanged for the upper tail.
struct Side {
    double a, b;
    double x, y;
    double margin;    // a y - b x
    double power;     // x^a y^b / B(a, b), G in what follows
    double deviance;  // of the power from its peak; see BetaPower::Value

    Side mirrored() const { return {b, a, y, x, -margin, power, deviance}; }
};

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

/// I_x(a, b) / G for a side with b <= 1 and x > 0.7.
double small_b_factor(const Side& side) {
    if (side.a >= kLiftedShape) {
        return gamma_expansion(side.a, side.b, side.y);
    }
    double partial = 0.0;
    double growth = 1.0;
    const int n = static_cast<int>(kLiftedShape - side.a) + 1;
    lift(side, n, &partial, &growth);
    const double rest = gamma_expansion(side.a + n, side.b, side.y);
    return partial / side.a + growth * rest;
}

constexpr double kFewTerms = 60.0;  // of a binomial sum

/// Whether binomial_sum() ends by itself, and soon.
bool has_few_terms(const Side& side) {
    return side.b <= kFewTerms && side.b == static_cast<int>(side.b);
}

/// Whether binomial_sum() needs few terms and has none of the negative ones that follow where j
/// exceeds b. The terms fall about like exp(-j drop - j^2 bend).
bool has_short_binomial_sum(const Side& side) {
    constexpr double reach = 39.0;      // -ln of the first term left out
    constexpr double moreTerms = 90.0;  // still fewer operations than the fraction near the mean,
    constexpr double nearDrop = 0.35;   // which is shorter further out
    const double drop = side.margin / (side.margin + side.b * side.x);
    const double bend = 0.5 * (side.a + side.b) / (side.a * side.b);
    const double terms = 2.0 * reach / (drop + std::sqrt(drop * drop + 4.0 * reach * bend));
    return terms < (drop < nearDrop ? moreTerms : kFewTerms) && terms < side.b;
}

/// *sum = y I_x(a, b) a / G where the point is below the mean: a binomial tail, first term first,
///   1 + (b - 1) / (a + 1) (x / y) + (b - 1) (b - 2) / ((a + 1) (a + 2)) (x / y)^2 + ...,
/// which ends by itself where b is whole. False where the terms left out at b count.
bool binomial_sum(const Side& side, double* sum) {
    constexpr double negligible = 1e-16;
    const double last = std::min(side.b, 1000.0);
    const double odds = side.x / side.y;
    double term = 1.0;
    double total = 1.0;
    for (Pair j{1.0, 2.0}; term > kSeriesTolerance * total && j[0] <= last; j += 2.0) {
        const Pair ratios = odds * ((side.b - j) / (side.a + j));
        const double between = term * ratios[0];
        term *= ratios[0] * ratios[1];
        total += between + term;
    }
    *sum = total;
    return std::fabs(term) <= negligible * total;
}

/// I_x(a, b) / G; 0 or 4.
int tail_factor(const Side& side, double* factor) {
    constexpr double smallestDivisor = 1e-290;
    if (side.b == 1.0 && side.a * side.y > smallestDivisor) {
        *factor = 1.0 / (side.a * side.y);
        return 0;
    }
    if (side.b <= 1.0 && side.x > kSeriesBound) {
        *factor = small_b_factor(side);
        return 0;
    }
    const bool areLarge = side.a > 1.0 && side.b > 1.0;
    const double ratio = side.x * (side.a + side.b) / (side.a + 1.0);
    const bool isShortSeries = !areLarge || ratio <= kShortRatio;
    double sum = 0.0;
    if (areLarge && (has_few_terms(side) || (!isShortSeries && has_short_binomial_sum(side))) &&
        binomial_sum(side, &sum)) {
        *factor = sum * (1.0 / (side.a * side.y));
        return 0;
    }
    if (isShortSeries) {
        const int status = beta_Iabx(side.a, side.b, side.x, &sum);
        *factor = sum / side.a;
        return status;
    }
    constexpr double nearMean = 12.0;  // where the expansion's terms become small
    if (side.deviance <= nearMean && large_shapes_expansion(side.a, side.b, side.deviance, &sum)) {
        // G without sqrt(a b / (a + b)), which the sum has absorbed
        *factor = sum / std::sqrt(side.a / (side.a + side.b) * side.b);
        return 0;
    }
    double J = 0.0;
    const int status = beta_Jabx(side.a, side.b, side.x, side.y, side.margin, &J);
    *factor = J;
    return status;
}

/// Whether the lower tail is the one to compute first.
bool lower_first(const Side& side) {
    if (side.a > 1.0 && side.b > 1.0) {
        const bool isShort = has_few_terms(side);
        const double variance = side.a / (side.a + side.b) * side.b;  // of the margin
        if (isShort != has_few_terms(side.mirrored()) && side.margin * side.margin < variance) {
            return isShort;
        }
        // at the mean by the shapes, so that exchanged arguments give exchanged tails
        return side.margin > 0.0 || (side.margin == 0.0 && side.a > side.b);
    }
    if (side.a <= 1.0 && side.b <= 1.0) {
        return side.x <= side.y;
    }
    const double total = side.a + side.b;
    return side.a <= 1.0 ? side.x <= 0.5 && side.x * total <= 1.5
                         : side.y > 0.5 || side.y * total > 1.5;
}

bool compute_tail(const Side& side, double* tail) {
    if (side.power == 0.0) {
        *tail = 0.0;
        return true;
    }
    double factor = 0.0;
    const int status = tail_factor(side, &factor);
    *tail = side.power * factor;
    return status == 0;
}

/// Both shapes 1/2, as for Cauchy's distribution. Returns the power.
double arcsine_tails(double x, double y, double* lower, double* upper) {
    constexpr double pi = 3.141592653589793;
    const double rootX = std::sqrt(x);
    const double rootY = std::sqrt(y);
    const double smaller = std::asin(std::min(rootX, rootY)) * (2.0 / pi);
    *lower = rootX <= rootY ? smaller : 1.0 - smaller;
    *upper = rootX <= rootY ? 1.0 - smaller : smaller;
    return rootX * rootY / pi;
}

/// No tail below the bound: it is 0, with a warning.
void flush(double* lower, double* upper) {
    if (*lower < kUnderflow || *upper < kUnderflow) {
        raise_level(kWarning, "beta_df");
        *lower = *lower < kUnderflow ? 0.0 : *lower;
        *upper = *upper < kUnderflow ? 0.0 : *upper;
    }
}

}  // namespace

int beta_Iabx(double a, double b, double x, double* S) {
    // Two terms at a time: their divisions run side by side.
    double term = 1.0;
    double sum = 1.0;
    Pair n{0.0, 1.0};
    while (term >= kSeriesTolerance * sum && n[0] <= kMaxTerms) {
        const Pair ratios = x * ((a + b + n) / (a + 1.0 + n));
        const double between = term * ratios[0];
        term *= ratios[0] * ratios[1];
        sum += between + term;
        n += 2.0;
    }
    *S = sum;
    if (n[0] > kMaxTerms) {
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

bool BetaShapes::unflushed_tails(const BetaPower::Value& at, double* lower, double* upper) const {
    Side side{a(), b(), at.x, at.y, at.margin, at.power, at.deviance};
    bool lowerFirst = lower_first(side);
    if (!lowerFirst) {
        side = side.mirrored();
    }
    // the first term of its series already tells that this is not the small tail
    if (side.a <= 1.0 && at.power > kComplementLimit * side.a) {
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
    *lower = lowerFirst ? tail : other;
    *upper = lowerFirst ? other : tail;
    return converged;
}

bool BetaShapes::tails_and_power(const BetaPoint& point, double* lower, double* upper,
                                 double* power) const {
    if (are_halves()) {
        *power = arcsine_tails(point.x.hi, point.y.hi, lower, upper);
        return true;
    }
    const BetaPower::Value at = m_power.value(point);
    *power = at.power;
    return unflushed_tails(at, lower, upper);
}

bool BetaShapes::tails(const BetaPoint& point, double* lower, double* upper) const {
    double power = 0.0;
    const bool converged = tails_and_power(point, lower, upper, &power);
    flush(lower, upper);
    return converged;
}

bool BetaShapes::tails(const BetaPower::Value& at, double* lower, double* upper) const {
    bool converged = true;
    if (are_halves()) {
        arcsine_tails(at.x, at.y, lower, upper);
    } else {
        converged = unflushed_tails(at, lower, upper);
    }
    flush(lower, upper);
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
