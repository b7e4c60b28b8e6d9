// Poisson tails are incomplete gamma functions, P(X > k) = P(k + 1, mean), at the accuracy of that
// kernel; the masses have their own, better one. Small counts are added up (count_recurrence.hpp).

#include "kernels/poisson.hpp"

#include "conventions/error_channel.hpp"
#include "kernels/count_recurrence.hpp"
#include "kernels/discrete_quantile.hpp"
#include "kernels/incomplete_gamma.hpp"
#include "kernels/limits.hpp"
#include "kernels/saddle_point.hpp"

#include <cmath>

namespace vela::kernels {
namespace {

using conventions::enter_kernel;
using conventions::kernel_failed;
using conventions::kInvalidArgument;
using conventions::kWarning;
using conventions::name_kernel;
using conventions::raise_level;

constexpr double kLargestCount = 94906264.0;  // its successor is the largest shape of gamma_pq()

bool is_valid(double mean) {
    return std::isgreaterequal(mean, 0.0) && std::islessequal(mean, kLargestDouble);
}

/// Whether one tail at a count that gamma_pq() refuses is 0 all the same.
bool has_negligible_tail(double k, double mean) {
    return k > kLargestCount && (k > 1e300 || mean > 1e300 || poisson_mass(k, mean) < kUnderflow);
}

CountRecurrence recurrence(double mean) { return {std::exp(-mean), mean, 1.0, 0.0}; }

double mass_of(double k, double mean) {
    constexpr double few = 40.0;  // more take as long as the general method
    const double mass =
        k <= few && CountRecurrence::is_short(k, mean) ? recurrence(mean).mass(k) : -1.0;
    return mass >= 0.0 ? mass : poisson_mass(k, mean);
}

/// What the quantile search asks for.
struct Poisson {
    double mean;

    void tails(double k, double* lower, double* upper) const { poisson_df(k, mean, lower, upper); }
    double mass(double k) const { return mass_of(k, mean); }
    double falling_ratio(double k) const { return k / mean; }
    static constexpr double precision = 1e-8;  // the tails have less of it than the masses
};

}  // namespace

void poisson_df(double k, double mean, double* lower, double* upper) {
    enter_kernel("poisson_df");
    *lower = *upper = kLargestDouble;
    if (k != k || !is_valid(mean)) {
        raise_level(kInvalidArgument, "poisson_df");
        return;
    }
    if (k < 0.0 || mean == 0.0) {
        *lower = k < 0.0 ? 0.0 : 1.0;
        *upper = k < 0.0 ? 1.0 : 0.0;
        return;
    }
    if (CountRecurrence::is_short(k, mean) && recurrence(mean).tails(k, lower, upper)) {
        return;
    }
    if (has_negligible_tail(k, mean)) {
        *lower = k < mean ? 0.0 : 1.0;
        *upper = k < mean ? 1.0 : 0.0;
        raise_level(kWarning, "poisson_df");
        return;
    }
    gamma_pq(mean, k + 1.0, upper, lower, nullptr);
    if (!kernel_failed()) {
        name_kernel("poisson_df");
    }
}

double poisson_pdf(double k, double mean) {
    enter_kernel("poisson_pdf");
    if (k != k || !is_valid(mean)) {
        raise_level(kInvalidArgument, "poisson_pdf");
        return kLargestDouble;
    }
    if (k < 0.0 || mean == 0.0) {
        return k == 0.0 ? 1.0 : 0.0;
    }
    return mean > 1e300 ? 0.0 : mass_of(k, mean);
}

void poisson_lower_quant(double probability, double mean, double* k) {
    enter_kernel("poisson_lower_quant");
    if (!is_valid(mean)) {
        *k = -kLargestDouble;
        raise_level(kInvalidArgument, "poisson_lower_quant");
        return;
    }
    constexpr double soonReached = 300.0;
    if (std::isgreater(probability, 0.0) && std::isless(probability, 1.0) && mean < soonReached &&
        recurrence(mean).quantile(probability, k)) {
        return;
    }
    const bool isSure = mean == 0.0;  // the one outcome is 0
    const double sd = std::sqrt(mean);
    const double skewness = sd > 1e-8 ? 1.0 / sd : 0.0;
    find_discrete_quantile("poisson_lower_quant", probability,
                           {mean, sd, skewness, 0.0, isSure ? 0.0 : kLargestCount, isSure},
                           Poisson{mean}, k);
}

}  // namespace vela::kernels
