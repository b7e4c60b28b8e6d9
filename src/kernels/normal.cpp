// Normal tails from erfc, erfc from the incomplete gamma function at shape 1/2. The quantile starts
// from Beasley and Springer (1977), Algorithm AS 111, Applied Statistics 26, and is refined by
// Newton's method on the same incomplete gamma function: P(|Z| < z) = P(1/2, z^2 / 2).

#include "kernels/normal.hpp"

#include "conventions/error_channel.hpp"
#include "conventions/fp_environment.hpp"
#include "conventions/status.hpp"
#include "kernels/gamma_newton.hpp"
#include "kernels/limits.hpp"
#include "kernels/location_scale.hpp"
#include "kernels/real_functions.hpp"
#include "kernels/regula_falsi_root.hpp"
#include "vela/missing_value.hpp"

#include <cerrno>
#include <cmath>

namespace vela::kernels {

using conventions::clear_negative_level;
using conventions::enter_kernel;
using conventions::kernel_failed;
using conventions::kInvalidArgument;
using conventions::raise_level;

namespace {

constexpr double kSmallestProbability = 1e-100;
constexpr double kSqrtHalfPi = 1.2533141373155003;

/// Built at first use, so that a caller's own start-up code may already compute.
const GammaShape& half_shape() {
    static const GammaShape shape = GammaShape::prepared(0.5);
    return shape;
}

}  // namespace

double kernel_erfc(double t) {
    // The cut-offs are deliberately not symmetric: below -5.625 erfc differs from 2 by less than
    // 1e-14.
    if (t > 26.5694) {
        return 0.0;
    }
    if (t < -5.625) {
        return 2.0;
    }
    if (std::fabs(t) < 1e-14) {
        return 1.0;
    }
    double P = 0.0;
    double Q = 0.0;
    half_shape().pq(t * t, &P, &Q, nullptr);
    return t >= 0.0 ? Q : 1.0 + P;
}

void normal_df(double x, double* lower, double* upper) {
    enter_kernel("normal_df");
    if (x != x) {
        // A comparison with NaN may or may not trap, as the compiler orders it; this always does.
        conventions::raise_invalid_operation();
        raise_level(kInvalidArgument, "normal_df");
    } else {
        const bool isUpperSmaller = x >= 0.0;
        const double t = x / std::sqrt(2.0);
        const double tail = 0.5 * kernel_erfc(isUpperSmaller ? t : -t);
        *(isUpperSmaller ? upper : lower) = tail;
        *(isUpperSmaller ? lower : upper) = 1.0 - tail;
    }
    if (conventions::error_channel.kernel_error_level >= kInvalidArgument) {
        *lower = kLargestDouble;
        *upper = kLargestDouble;
    }
    clear_negative_level("normal_df");
}

namespace {

/// AS 111: the lower-tail quantile of p.
double beasley_springer(double p) {
    if (p <= 0.0 || p >= 1.0) {
        errno = EDOM;
        return -kLargestDouble;
    }
    const double q = p - 0.5;
    if (std::fabs(q) <= 0.42) {
        const double r = q * q;
        return q *
               (((-25.44106049637 * r + 41.39119773534) * r - 18.61500062529) * r + 2.50662823884) /
               ((((3.13082909833 * r - 21.06224101826) * r + 23.08336743743) * r - 8.4735109309) *
                    r +
                1.0);
    }
    const double r = std::sqrt(-std::log(q <= 0.0 ? p : 1.0 - p));
    const double z =
        (((2.32121276858 * r + 4.85014127135) * r - 2.29796479134) * r - 2.78718931138) /
        ((1.63706781897 * r + 3.54388924762) * r + 1.0);
    return q < 0.0 ? -z : z;
}

}  // namespace

void normal_upper_quant(double p, double* z) {
    enter_kernel("normal_upper_quant");
    if (p != p || p < kSmallestProbability || p > 0.5) {
        raise_level(kInvalidArgument, "normal_upper_quant");
        *z = -kLargestDouble;
        return;
    }
    const double d = 1.0 - 2.0 * p;
    if (d <= 1e-5) {
        *z = d * kSqrtHalfPi;  // first order about the median, not refined
        return;
    }
    const double start = beasley_springer(p);
    *z = start * start * 0.5;
    if (p > 0.25) {
        gamma_newton(d, half_shape(), z, GammaTail::kLower);
    } else {
        gamma_newton(2.0 * p, half_shape(), z, GammaTail::kUpper);
    }
    *z = *z > 0.0 ? std::sqrt(2.0 * *z) : 0.0;
    clear_negative_level("normal_upper_quant");
}

void inv_normal_df(double p, double* z) {
    enter_kernel("inv_normal_df");
    if (p != p || p < kSmallestProbability || p > 1.0) {
        raise_level(kInvalidArgument, "inv_normal_df");
        *z = -kLargestDouble;
        return;
    }
    if (p < 0.5) {
        normal_upper_quant(p, z);
        *z = -*z;
    } else {
        normal_upper_quant(1.0 - p, z);
    }
    clear_negative_level("inv_normal_df");
}

namespace {

/// The standard normal quantile where inv_normal_df() gives none: a search in the far lower tail.
double far_tail_quantile(double p) {
    constexpr double leftEnd = -36.0;
    double smallest = 0.0;
    double upper = 0.0;
    normal_df(leftEnd, &smallest, &upper);
    if (kernel_failed()) {
        smallest = MissingValue;
    }
    if (p != p || p < smallest || p > 0.5) {
        return MissingValue;
    }
    CmStandardNormalCdf equation(p);
    int status = conventions::kSuccess;
    return regula_falsi_root(leftEnd, 0.0, equation, &status);
}

}  // namespace

double normal_inv_cdf(double p, double mean, double sd) {
    double z = 0.0;
    inv_normal_df(p, &z);
    if (kernel_failed()) {
        z = far_tail_quantile(p);
        if (z == MissingValue) {
            return MissingValue;
        }
    }
    return unstandardize(z, mean, sd);
}

}  // namespace vela::kernels
