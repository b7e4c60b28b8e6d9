// Noncentral F as a Poisson mixture of beta probabilities in x = r / (1 + r), r = df1 F / df2, both
// tails by positive sums; see noncentral_mixture.cpp. The ratio r is formed in two doubles. Beyond
// 1e-100 and 1e100 the tails are powers of it.

#include "kernels/noncentral_f.hpp"

#include "conventions/error_channel.hpp"
#include "kernels/f_central.hpp"
#include "kernels/limits.hpp"
#include "kernels/noncentral_chi_square.hpp"
#include "kernels/noncentral_report.hpp"

#include <algorithm>
#include <cmath>

namespace vela::kernels {
namespace {

using conventions::enter_kernel;
using conventions::kArgumentTooLarge;
using conventions::kInvalidArgument;
using conventions::kNoError;
using conventions::raise_level;

// Far above it the denominator has no spread that a double could show.
constexpr double kEndlessDf = 1e45;

bool is_central(double df1, double noncentrality) {
    return noncentrality == 0.0 || df1 > kLargestDouble;
}

conventions::ErrorLevel check(double x, double df1, double df2, double noncentrality) {
    if (x != x || df1 != df1 || df2 != df2 || noncentrality != noncentrality || df1 <= 0.0 ||
        df2 <= 0.0 || noncentrality < 0.0 || noncentrality > kLargestDouble) {
        return kInvalidArgument;
    }
    const bool isServed = df1 >= kSmallestDf && df1 <= kLargestDf && df2 >= kSmallestDf &&
                          noncentrality <= kLargestNoncentrality;
    return is_central(df1, noncentrality) || isServed ? kNoError : kArgumentTooLarge;
}

/// The tails at 0 < f < infinity.
MixtureTails tails_at(double f, double df1, double df2, double mean) {
    const double a = 0.5 * df1;
    const double b = 0.5 * df2;
    if (df2 > kEndlessDf) {
        return noncentral_gamma_tails(std::min(f, 1e200) * a, a, mean);
    }
    const double logRatio = std::log(f) + std::log(df1) - std::log(df2);
    if (logRatio < -kLogPowerLawEdge) {
        const BetaPoint edge = BetaPoint::from_ratio({kPowerLawEdge, 0.0});
        return below_edge(mixture_tails(edge, a, b, mean), a, a * (logRatio + kLogPowerLawEdge));
    }
    if (logRatio > kLogPowerLawEdge) {
        const BetaPoint edge = BetaPoint::from_ratio({1.0 / kPowerLawEdge, 0.0});
        return above_edge(mixture_tails(edge, a, b, mean), b, b * (kLogPowerLawEdge - logRatio));
    }
    const DoubleDouble numerator = two_product(df1, f);
    const BetaPoint exchanged = BetaPoint::from_ratio(numerator / df2);
    return mixture_tails({exchanged.y, exchanged.x}, a, b, mean);
}

/// The noncentral numerator as a multiple of a central one (Patnaik 1949), and the cube root of F
/// as a ratio of two normal variables (Paulson 1942). Where that has no solution the tail is heavy,
/// and the search needs no good start.
double start_value(double p, double df1, double df2, double noncentrality) {
    const double growth = 1.0 + noncentrality / df1;
    const double patnaik = (df1 + noncentrality) * (growth / (growth + noncentrality / df1));
    const double z = normal_quantile_start(p);
    const double spread1 = 1.0 / (4.5 * std::max(patnaik, 1.0));
    const double spread2 = 1.0 / (4.5 * std::clamp(df2, 1.0, kEndlessDf));
    const double mean1 = 1.0 - spread1;
    const double mean2 = 1.0 - spread2;
    const double a = mean2 * mean2 - z * z * spread2;
    const double discriminant =
        mean1 * mean1 * spread2 + mean2 * mean2 * spread1 - z * z * spread1 * spread2;
    if (a < 0.1 || discriminant <= 0.0) {
        return growth;
    }
    const double root = (mean1 * mean2 + z * std::sqrt(discriminant)) / a;
    return root > 0.1 ? growth * root * root * root : 1e-3 * growth;
}

/// Asked first where the upper tail is so heavy that it may be: the search would take long to find
/// out.
bool is_beyond_doubles(double p, double df1, double df2, double mean) {
    constexpr double heavy = 2.0;
    if (df2 > heavy) {
        return false;
    }
    const MixtureTails end = tails_at(kLargestDouble, df1, df2, mean);
    return p > 0.5 ? end.upper > 1.0 - p : end.lower < p;
}

}  // namespace

void F_ncdf(double x, double df1, double df2, double noncentrality, double* lower, double* upper) {
    enter_kernel("F_ncdf");
    *lower = kLargestDouble;
    *upper = kLargestDouble;
    const auto level = check(x, df1, df2, noncentrality);
    if (level != kNoError) {
        raise_level(level, "F_ncdf");
        return;
    }
    if (x <= 0.0 || x > kLargestDouble) {
        *lower = x <= 0.0 ? 0.0 : 1.0;
        *upper = 1.0 - *lower;
        return;
    }
    if (is_central(df1, noncentrality)) {
        f_df(x, df1, df2, lower, upper);
        return;
    }
    report(tails_at(x, df1, df2, poisson_mean(noncentrality)), "F_ncdf", lower, upper);
}

void inv_F_ncdf(double p, double df1, double df2, double noncentrality, double* x) {
    enter_kernel("inv_F_ncdf");
    *x = -kLargestDouble;
    auto level = check(p, df1, df2, noncentrality);
    if (level == kNoError && (p < 0.0 || p >= 1.0)) {
        level = kInvalidArgument;
    }
    if (level != kNoError) {
        raise_level(level, "inv_F_ncdf");
        return;
    }
    if (is_central(df1, noncentrality)) {
        inv_f_df(p, df1, df2, x);
        return;
    }
    if (p == 0.0) {
        *x = 0.0;
        return;
    }
    const double mean = poisson_mean(noncentrality);
    if (is_beyond_doubles(p, df1, df2, mean)) {
        enter_kernel("inv_F_ncdf");  // whatever a beta probability on the way had to say
        raise_level(kArgumentTooLarge, "inv_F_ncdf");
        return;
    }
    const auto tailsAt = [=](double at) {
        return at > 0.0 ? tails_at(at, df1, df2, mean) : MixtureTails{0.0, 1.0, 0.0, true};
    };
    report_quantile(p, start_value(p, df1, df2, noncentrality), tailsAt, "inv_F_ncdf", x);
}

}  // namespace vela::kernels
