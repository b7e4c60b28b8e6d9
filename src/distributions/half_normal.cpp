#include "vela/half_normal.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/exponential.hpp"
#include "distributions/standard_score.hpp"
#include "distributions/tails.hpp"
#include "kernels/normal.hpp"

#include <cmath>

namespace vela {
namespace distributions {
namespace {

using conventions::kernel_failed;

double half_normal_pdf(double x, double scale, double threshold) {
    if (std::isless(x, threshold)) {
        return 0.0;
    }
    const double z = standard_score(x, threshold, scale);
    if (z != z) {
        return MissingValue;
    }
    constexpr double vanishing = 100.0;  // the density is 0 beyond, however small scale is
    constexpr double rootTwoOverPi = 0.7978845608028654;
    return z > vanishing ? 0.0 : conventions::value_unless_overflow(0.0, [=] {
        return rootTwoOverPi * exp_over(0.5 * z * z, scale);
    });
}

/// P(Z <= z) of the normal distribution whose upper half this is; at its mean whatever scale is.
double normal_lower_tail(double x, double scale, double threshold) {
    if (x == MissingValue) {
        return MissingValue;
    }
    if (x == threshold) {
        return 0.5;
    }
    const double z = standard_score(x, threshold, scale);
    return z == z ? tails_of(kernels::normal_df, z).lower : conventions::kNaN;
}

double half_normal_cdf(double x, double scale, double threshold, bool upper) {
    if (std::isless(x, threshold)) {
        return upper ? 1.0 : 0.0;
    }
    // The doubling applies to MissingValue too, deliberately: callers know the number.
    const double lower = 2.0 * normal_lower_tail(x, scale, threshold) - 1.0;
    return upper ? 1.0 - lower : lower;
}

double half_normal_inv_cdf(double p, double scale, double threshold) {
    constexpr double rootHalfPi = 1.2533141373155003;
    constexpr double linear = 1e-5;  // up to here (1 - p) / 2 would lose the digits of p
    if (!std::isgreaterequal(p, 0.0) || !std::isless(p, 1.0)) {
        return MissingValue;
    }
    double z = p * rootHalfPi;
    if (p <= linear) {
        z += z * z * z / 6.0;
    } else {
        kernels::normal_upper_quant(0.5 * (1.0 - p), &z);
        if (kernel_failed()) {
            return MissingValue;
        }
    }
    return from_standard_score(z, threshold, scale);
}

}  // namespace

}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double HalfNormalPdf(double x, double scale, double threshold) {
    return call<kIsOrdinary>(distributions::half_normal_pdf, x, scale, threshold);
}

void HalfNormalPdf(double* out, const double* x, std::size_t n, double scale, double threshold) {
    call<kIsOrdinary>(distributions::half_normal_pdf, out, x, n, scale, threshold);
}

double HalfNormalCdf(double x, double scale, double threshold, bool upper) {
    return call<kIsOrdinary>(distributions::half_normal_cdf, x, scale, threshold, upper);
}

void HalfNormalCdf(double* out, const double* x, std::size_t n, double scale, double threshold,
                   bool upper) {
    call<kIsOrdinary>(distributions::half_normal_cdf, out, x, n, scale, threshold, upper);
}

double HalfNormalInvCdf(double p, double scale, double threshold) {
    return call<kGivesMissing>(distributions::half_normal_inv_cdf, p, scale, threshold);
}

void HalfNormalInvCdf(double* out, const double* p, std::size_t n, double scale, double threshold) {
    call<kGivesMissing>(distributions::half_normal_inv_cdf, out, p, n, scale, threshold);
}

}  // namespace vela
