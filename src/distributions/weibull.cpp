#include "vela/weibull.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/exponential.hpp"
#include "distributions/standard_score.hpp"

#include <cmath>

namespace vela {
namespace distributions {
namespace {

using kernels::safe_log;
using kernels::safe_pow;
using kernels::standardize;
using kernels::unstandardize;

double weibull_pdf(double x, double shape, double scale, double threshold) {
    if (std::islessequal(x, threshold)) {
        return 0.0;
    }
    const double z = standard_score(x, threshold, scale);
    if (z != z || !std::isgreater(shape, 0.0)) {
        return MissingValue;
    }
    if (std::isinf(z) || z == 0.0) {
        return 0.0;
    }
    return conventions::value_unless_overflow(0.0, [=] {
        const double logZ = std::log(z);
        return shape * exp_over(safe_pow(z, shape) - (shape - 1.0) * logZ, scale);
    });
}

double weibull_cdf(double x, double shape, double scale, double threshold, bool upper) {
    if (std::isless(x, threshold)) {
        return upper ? 1.0 : 0.0;
    }
    if (x != x || threshold != threshold || scale != scale || scale == 0.0 || shape != shape) {
        return MissingValue;
    }
    const double z = standardize(x, threshold, scale);
    return conventions::value_unless_overflow(upper ? 0.0 : 1.0, [=] {
        const double t = safe_pow(z, shape);
        if (t <= 0.0) {  // negative for a negative scale and an odd shape
            return upper ? 1.0 : 0.0;
        }
        return unit_exponential_tail(t, upper);
    });
}

double weibull_inv_cdf(double p, double shape, double scale, double threshold) {
    if (p == 0.0) {
        return threshold;
    }
    if (p == 1.0) {
        return MissingValue;
    }
    return conventions::value_unless_overflow(MissingValue, [=] {
        return unstandardize(safe_pow(-safe_log(1.0 - p), 1.0 / shape), threshold, scale);
    });
}

}  // namespace

}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double WeibullPdf(double x, double shape, double scale, double threshold) {
    return call<kIsOrdinary>(distributions::weibull_pdf, x, shape, scale, threshold);
}

void WeibullPdf(double* out, const double* x, std::size_t n, double shape, double scale,
                double threshold) {
    call<kIsOrdinary>(distributions::weibull_pdf, out, x, n, shape, scale, threshold);
}

double WeibullCdf(double x, double shape, double scale, double threshold, bool upper) {
    return call<kIsOrdinary>(distributions::weibull_cdf, x, shape, scale, threshold, upper);
}

void WeibullCdf(double* out, const double* x, std::size_t n, double shape, double scale,
                double threshold, bool upper) {
    call<kIsOrdinary>(distributions::weibull_cdf, out, x, n, shape, scale, threshold, upper);
}

double WeibullInvCdf(double p, double shape, double scale, double threshold) {
    return call<kIsOrdinary>(distributions::weibull_inv_cdf, p, shape, scale, threshold);
}

void WeibullInvCdf(double* out, const double* p, std::size_t n, double shape, double scale,
                   double threshold) {
    call<kIsOrdinary>(distributions::weibull_inv_cdf, out, p, n, shape, scale, threshold);
}

}  // namespace vela
