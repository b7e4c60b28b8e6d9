// Binomial tails are incomplete beta functions (Johnson, Kotz & Kemp 1992, section 3.4): with
// q = 1 - p
//
//   P(X <= k) = I_q(n - k, k + 1),  P(X > k) = I_p(k + 1, n - k),  0 <= k < n,
//
// and the beta kernel computes both at full relative precision. It takes the smaller of p and q as
// exact, so nothing is lost to the rounding of 1 - p. p = 0 and p = 1 leave one outcome. Small
// counts are added up instead (count_recurrence.hpp), of non-events where these are the rarer ones.

#include "kernels/binomial.hpp"

#include "conventions/error_channel.hpp"
#include "kernels/beta.hpp"
#include "kernels/complement_power.hpp"
#include "kernels/count_recurrence.hpp"
#include "kernels/discrete_quantile.hpp"
#include "kernels/limits.hpp"
#include "kernels/saddle_point.hpp"

#include <cmath>

namespace vela::kernels {
namespace {

using conventions::enter_kernel;
using conventions::kernel_failed;
using conventions::kInvalidArgument;
using conventions::name_kernel;
using conventions::raise_level;

bool is_valid(double n, double p) {
    return std::isgreaterequal(n, 0.0) && std::isless(n, 1e300) && std::isgreaterequal(p, 0.0) &&
           std::islessequal(p, 1.0);
}

bool is_inside(double p) { return std::isgreater(p, 0.0) && std::isless(p, 1.0); }

constexpr double kFew = 150.0;  // more take as long as the beta kernel

/// For 0 < p < 1.
CountRecurrence recurrence(double n, double p) {
    return {complement_power(p, n), p / (1.0 - p), n, -1.0};
}

/// For p <= 1/2; false where the counts are not few.
bool few_count_tails(double k, double n, double p, double* upToK, double* aboveK) {
    return CountRecurrence::is_short(k, n * p, kFew) && recurrence(n, p).tails(k, upToK, aboveK);
}

double mass_of(double k, double n, double p) {
    constexpr double few = 40.0;  // more take as long as the general method
    const double mass =
        k <= few && CountRecurrence::is_short(k, n * p) ? recurrence(n, p).mass(k) : -1.0;
    return mass >= 0.0 ? mass : binomial_mass(k, n, p, 1.0 - p);
}

/// What the quantile search asks for.
struct Binomial {
    double n, p;

    void tails(double k, double* lower, double* upper) const { binomial_df(k, n, p, lower, upper); }
    double mass(double k) const { return mass_of(k, n, p); }
    double falling_ratio(double k) const { return k * (1.0 - p) / ((n - k + 1.0) * p); }
    static constexpr double precision = 1e-12;
};

}  // namespace

void binomial_df(double k, double n, double p, double* lower, double* upper) {
    enter_kernel("binomial_df");
    *lower = *upper = kLargestDouble;
    if (k != k || !is_valid(n, p)) {
        raise_level(kInvalidArgument, "binomial_df");
        return;
    }
    const bool isAll = k >= n || (p == 0.0 && k >= 0.0);
    if (isAll || k < 0.0 || p == 1.0) {
        *lower = isAll ? 1.0 : 0.0;
        *upper = isAll ? 0.0 : 1.0;
        return;
    }
    if (k == 0.0) {
        const EventOrNone tails = event_or_none(p, n);
        *lower = tails.none < kUnderflow ? 0.0 : tails.none;  // as in the beta kernel
        *upper = tails.event;
        return;
    }
    // 1 - p is exact where it is used
    if (p <= 0.5 ? few_count_tails(k, n, p, lower, upper)
                 : few_count_tails(n - k - 1.0, n, 1.0 - p, upper, lower)) {
        return;
    }
    beta_df(1.0 - p, p, n - k, k + 1.0, lower, upper);
    if (!kernel_failed()) {
        name_kernel("binomial_df");
    }
}

double binomial_pdf(double k, double n, double p) {
    enter_kernel("binomial_pdf");
    if (k != k || !is_valid(n, p)) {
        raise_level(kInvalidArgument, "binomial_pdf");
        return kLargestDouble;
    }
    if (k < 0.0 || k > n) {
        return 0.0;
    }
    if (p == 0.0 || p == 1.0) {
        return k == (p == 0.0 ? 0.0 : n) ? 1.0 : 0.0;
    }
    return p <= 0.5 ? mass_of(k, n, p) : mass_of(n - k, n, 1.0 - p);
}

void binomial_lower_quant(double probability, double n, double p, double* k) {
    enter_kernel("binomial_lower_quant");
    if (!is_valid(n, p)) {
        *k = -kLargestDouble;
        raise_level(kInvalidArgument, "binomial_lower_quant");
        return;
    }
    const double mean = n * p;
    constexpr double soonReached = 120.0;
    if (is_inside(probability) && is_inside(p) && mean < soonReached &&
        recurrence(n, p).quantile(probability, k)) {
        return;
    }
    const double sd = std::sqrt(mean * (1.0 - p));
    const double skewness = sd > 1e-8 ? (1.0 - 2.0 * p) / sd : 0.0;
    const double smallest = p == 1.0 ? n : 0.0;
    const double largest = p == 0.0 ? 0.0 : n;
    find_discrete_quantile("binomial_lower_quant", probability,
                           {mean, sd, skewness, smallest, largest, true}, Binomial{n, p}, k);
}

}  // namespace vela::kernels
