// Negative binomial tails are incomplete beta functions (Johnson, Kotz & Kemp 1992, section 5.6):
// with q = 1 - p
//
//   P(X <= k) = I_p(r, k + 1),  P(X > k) = I_q(k + 1, r),  P(X = k) = p^r q^k / (k B(r, k)),
//
// and those of the geometric distribution are powers, P(X > k) = q^(k + 1). Small counts are added
// up instead (count_recurrence.hpp).

#include "kernels/neg_binomial.hpp"

#include "conventions/error_channel.hpp"
#include "kernels/beta.hpp"
#include "kernels/beta_power.hpp"
#include "kernels/complement_power.hpp"
#include "kernels/count_recurrence.hpp"
#include "kernels/discrete_quantile.hpp"
#include "kernels/limits.hpp"

#include <algorithm>
#include <cmath>

namespace vela::kernels {
namespace {

using conventions::enter_kernel;
using conventions::kArgumentTooLarge;
using conventions::kernel_failed;
using conventions::kInvalidArgument;
using conventions::name_kernel;
using conventions::raise_level;

constexpr double kSmallestShape = 1e-150;    // that the beta functions take
constexpr double kLargestCount = 1e149;      // well inside the shapes that beta_df() takes
constexpr double kLargestGeometric = 1e300;  // no tail beyond it is told apart from its end

bool is_probability(double p) { return std::isgreater(p, 0.0) && std::islessequal(p, 1.0); }

bool is_valid(double p, double r) {
    return is_probability(p) && std::isgreater(r, 0.0) && std::isless(r, 1e149);
}

/// Whether sums of masses can serve a count k; more than these take as long as the beta kernel.
bool is_short(double k, double p, double r) {
    constexpr double few = 150.0;
    return CountRecurrence::is_short(k, r * (1.0 - p), few);
}

/// For a short one.
CountRecurrence recurrence(double p, double r) { return {std::pow(p, r), 1.0 - p, r, 1.0}; }

DiscreteShape shape_of(double p, double r) {
    const double q = 1.0 - p;
    const double bounded = std::max(p, 1e-140);  // keeps the mean a finite number
    const double root = std::sqrt(r) * std::sqrt(q);
    return {r / bounded * q, root / bounded, (2.0 - p) / root, 0.0, kLargestCount, false};
}

/// Whether a k beyond the shapes of the beta kernel leaves no upper tail: by Chernoff's bound its
/// logarithm is at most r (1 + ln(k p / r)) - k p.
bool is_beyond_all_mass(double k, double p, double r) {
    return k > kLargestCount && k * p > 1e3 && k * p > 100.0 * r;
}

/// What the quantile search asks for.
struct NegBinomial {
    double p, r;

    void tails(double k, double* lower, double* upper) const {
        neg_binomial_df(k, p, r, lower, upper);
    }
    double mass(double k) const { return neg_binomial_pdf(k, p, r); }
    double falling_ratio(double k) const { return k / ((r + (k - 1.0)) * (1.0 - p)); }
    static constexpr double precision = 1e-12;
};

struct Geometric {
    double p;

    void tails(double k, double* lower, double* upper) const { geometric_df(k, p, lower, upper); }
};

}  // namespace

void neg_binomial_df(double k, double p, double r, double* lower, double* upper) {
    enter_kernel("neg_binomial_df");
    *lower = *upper = kLargestDouble;
    if (k != k || !is_valid(p, r)) {
        raise_level(kInvalidArgument, "neg_binomial_df");
        return;
    }
    if (k < 0.0 || p == 1.0 || is_beyond_all_mass(k, p, r)) {
        *lower = k < 0.0 ? 0.0 : 1.0;
        *upper = k < 0.0 ? 1.0 : 0.0;
        return;
    }
    if (k == 0.0) {
        const double power = std::pow(p, r);
        *lower = power < kUnderflow ? 0.0 : power;  // as in the beta kernel
        *upper = -std::expm1(r * std::log(p));
        return;
    }
    if (is_short(k, p, r) && recurrence(p, r).tails(k, lower, upper)) {
        return;
    }
    beta_df(p, 1.0 - p, r, k + 1.0, lower, upper);
    if (!kernel_failed()) {
        name_kernel("neg_binomial_df");
    }
}

double neg_binomial_pdf(double k, double p, double r) {
    enter_kernel("neg_binomial_pdf");
    if (k != k || !is_valid(p, r)) {
        raise_level(kInvalidArgument, "neg_binomial_pdf");
        return kLargestDouble;
    }
    if (k < 0.0 || p == 1.0 || is_beyond_all_mass(k, p, r)) {
        return k == 0.0 ? 1.0 : 0.0;
    }
    if (k > kLargestCount) {
        raise_level(kArgumentTooLarge, "neg_binomial_pdf");
        return kLargestDouble;
    }
    if (k == 0.0) {
        return std::pow(p, r);
    }
    if (r < kSmallestShape) {
        return complement_power(p, k) * (r / k);  // the limit
    }
    constexpr double few = 40.0;  // more take as long as the general method
    if (k <= few && is_short(k, p, r)) {
        const double mass = recurrence(p, r).mass(k);
        if (mass >= 0.0) {
            return mass;
        }
    }
    // not a binomial mass of r + k trials, whose rounded sum would cost 1e6 events four digits
    return BetaPower(r, k).at(BetaPoint::from_doubles(p, 1.0 - p)) / k;
}

void neg_binomial_lower_quant(double probability, double p, double r, double* k) {
    enter_kernel("neg_binomial_lower_quant");
    *k = -kLargestDouble;
    if (!is_valid(p, r)) {
        raise_level(kInvalidArgument, "neg_binomial_lower_quant");
        return;
    }
    constexpr double soonReached = 120.0;
    if (std::isgreater(probability, 0.0) && std::isless(probability, 1.0) && p < 1.0 &&
        r * (1.0 - p) < soonReached * p && recurrence(p, r).quantile(probability, k)) {
        return;
    }
    const DiscreteShape shape =
        p < 1.0 ? shape_of(p, r) : DiscreteShape{0.0, 0.0, 0.0, 0.0, 0.0, true};
    find_discrete_quantile("neg_binomial_lower_quant", probability, shape, NegBinomial{p, r}, k);
}

void geometric_df(double k, double p, double* lower, double* upper) {
    enter_kernel("geometric_df");
    *lower = *upper = kLargestDouble;
    if (k != k || !is_probability(p)) {
        raise_level(kInvalidArgument, "geometric_df");
        return;
    }
    if (k < 0.0 || p == 1.0 || k > kLargestDouble) {
        *lower = k < 0.0 ? 0.0 : 1.0;
        *upper = k < 0.0 ? 1.0 : 0.0;
        return;
    }
    const EventOrNone tails = event_or_none(p, k + 1.0);
    *upper = tails.none;
    *lower = tails.event;
}

double geometric_pdf(double k, double p) {
    enter_kernel("geometric_pdf");
    if (k != k || !is_probability(p)) {
        raise_level(kInvalidArgument, "geometric_pdf");
        return kLargestDouble;
    }
    if (k < 0.0 || p == 1.0) {
        return k == 0.0 ? 1.0 : 0.0;
    }
    return p * complement_power(p, k);
}

void geometric_lower_quant(double probability, double p, double* k) {
    enter_kernel("geometric_lower_quant");
    *k = -kLargestDouble;
    if (!is_probability(p)) {
        raise_level(kInvalidArgument, "geometric_lower_quant");
        return;
    }
    DiscreteShape shape{0.0, 0.0, 0.0, 0.0, kLargestGeometric, false};
    if (p == 1.0) {
        shape = {0.0, 0.0, 0.0, 0.0, 0.0, true};
    } else if (std::isgreater(probability, 0.0) && std::isless(probability, 1.0)) {
        const double logQ = std::min(std::log1p(-p), -1e-298);
        const double n = std::log1p(-probability) / logQ;
        shape.mean = std::ceil(n) - 1.0;
        // final, unless rounding or the shortfall that counts as reached could move it
        const double closeTo = 1e-12 * n + 1.2e-16 / (1.0 - probability) / -logQ;
        if (p > 1e-100 && std::fabs(n - std::round(n)) > closeTo) {
            *k = shape.mean;
            return;
        }
    }
    find_discrete_quantile("geometric_lower_quant", probability, shape, Geometric{p}, k);
}

}  // namespace vela::kernels
