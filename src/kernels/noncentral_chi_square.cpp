// Noncentral chi-square as a Poisson mixture of central ones, both tails by positive sums; see
// noncentral_mixture.cpp. Below x = 2e-100 the lower tail is a multiple of x^(df / 2).

#include "kernels/noncentral_chi_square.hpp"

#include "conventions/error_channel.hpp"
#include "kernels/chi_square.hpp"
#include "kernels/chi_square_quantile.hpp"
#include "kernels/limits.hpp"
#include "kernels/noncentral_report.hpp"

#include <cmath>

namespace vela::kernels {
namespace {

using conventions::enter_kernel;
using conventions::kArgumentTooLarge;
using conventions::kInvalidArgument;
using conventions::kNoError;
using conventions::raise_level;

conventions::ErrorLevel check(double x, double df, double noncentrality) {
    if (x != x || df != df || noncentrality != noncentrality || df <= 0.0 || noncentrality < 0.0 ||
        noncentrality > kLargestDouble) {
        return kInvalidArgument;
    }
    const bool isServed =
        df >= kSmallestDf && df <= kLargestDf && noncentrality <= kLargestNoncentrality;
    return noncentrality == 0.0 || isServed ? kNoError : kArgumentTooLarge;
}

/// Abdel-Aty (1954): the cube root of X / mean is nearly normal. Where that fails (df small, far
/// below the mean) the search needs no good start.
double start_value(double p, double df, double noncentrality) {
    const double mean = df + noncentrality;
    const double spread = (1.0 + noncentrality / mean) / (4.5 * std::max(mean, 1.0));
    const double root = 1.0 - spread + normal_quantile_start(p) * std::sqrt(spread);
    return root > 0.1 ? mean * root * root * root : 1e-3 * mean;
}

}  // namespace

MixtureTails noncentral_gamma_tails(double y, double a, double mean) {
    if (y > kPowerLawEdge) {
        return {1.0, 0.0, 0.0, true};
    }
    constexpr double edge = 1.0 / kPowerLawEdge;
    if (y < edge) {
        constexpr double smallest = 5e-324;  // y may be half or less of it
        const double logFactor = a * (std::log(std::max(y, smallest)) + kLogPowerLawEdge);
        return below_edge(mixture_tails(gamma_point(edge), a, kEndless, mean), a,
                          std::min(logFactor, 0.0));
    }
    return mixture_tails(gamma_point(y), a, kEndless, mean);
}

void chi2_ncdf(double x, double df, double noncentrality, double* lower, double* upper) {
    enter_kernel("chi2_ncdf");
    *lower = kLargestDouble;
    *upper = kLargestDouble;
    const auto level = check(x, df, noncentrality);
    if (level != kNoError) {
        raise_level(level, "chi2_ncdf");
        return;
    }
    if (x <= 0.0 || x > kLargestDouble) {
        *lower = x <= 0.0 ? 0.0 : 1.0;
        *upper = 1.0 - *lower;
        return;
    }
    if (noncentrality == 0.0) {
        chi2_df(x, df, lower, upper);
        return;
    }
    const MixtureTails tails =
        noncentral_gamma_tails(0.5 * x, 0.5 * df, poisson_mean(noncentrality));
    report(tails, "chi2_ncdf", lower, upper);
}

void inv_chi2_ncdf(double p, double df, double noncentrality, double* x) {
    enter_kernel("inv_chi2_ncdf");
    *x = -kLargestDouble;
    auto level = check(p, df, noncentrality);
    if (level == kNoError && (p < 0.0 || p >= 1.0)) {
        level = kInvalidArgument;
    }
    if (level != kNoError) {
        raise_level(level, "inv_chi2_ncdf");
        return;
    }
    if (noncentrality == 0.0) {
        inv_chi2_df(p, df, x);
        return;
    }
    if (p == 0.0) {
        *x = 0.0;
        return;
    }
    const double mean = poisson_mean(noncentrality);
    const auto tailsAt = [=](double at) {
        return noncentral_gamma_tails(0.5 * at, 0.5 * df, mean);
    };
    report_quantile(p, start_value(p, df, noncentrality), tailsAt, "inv_chi2_ncdf", x);
}

}  // namespace vela::kernels
