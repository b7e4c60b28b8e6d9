#include "vela/exponential.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/exponential.hpp"
#include "kernels/guarded.hpp"
#include "kernels/location_scale.hpp"

#include <cmath>

namespace vela {
namespace distributions {
namespace {

using kernels::safe_exp;
using kernels::safe_log;
using kernels::standardize;
using kernels::unstandardize;

double exponential_pdf(double x, double scale, double threshold) {
    if (!std::isgreater(scale, 0.0) || threshold != threshold) {
        return MissingValue;
    }
    if (x < threshold) {
        return 0.0;
    }
    return conventions::value_unless_overflow(
        0.0, [=] { return safe_exp(-standardize(x, threshold, scale)) / scale; });
}

double exponential_cdf(double x, double scale, double threshold, bool upper) {
    if (x <= threshold) {
        return upper ? 1.0 : 0.0;
    }
    return unit_exponential_tail(standardize(x, threshold, scale), upper);
}

double exponential_inv_cdf(double p, double scale, double threshold) {
    return conventions::value_unless_overflow(
        MissingValue, [=] { return unstandardize(-safe_log(1.0 - p), threshold, scale); });
}

}  // namespace
}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double ExponentialPdf(double x, double scale, double threshold) {
    return call<kIsOrdinary>(distributions::exponential_pdf, x, scale, threshold);
}

void ExponentialPdf(double* out, const double* x, std::size_t n, double scale, double threshold) {
    call<kIsOrdinary>(distributions::exponential_pdf, out, x, n, scale, threshold);
}

double ExponentialCdf(double x, double scale, double threshold, bool upper) {
    return call<kIsOrdinary>(distributions::exponential_cdf, x, scale, threshold, upper);
}

void ExponentialCdf(double* out, const double* x, std::size_t n, double scale, double threshold,
                    bool upper) {
    call<kIsOrdinary>(distributions::exponential_cdf, out, x, n, scale, threshold, upper);
}

double ExponentialInvCdf(double p, double scale, double threshold) {
    return call<kIsOrdinary>(distributions::exponential_inv_cdf, p, scale, threshold);
}

void ExponentialInvCdf(double* out, const double* p, std::size_t n, double scale,
                       double threshold) {
    call<kIsOrdinary>(distributions::exponential_inv_cdf, out, p, n, scale, threshold);
}

}  // namespace vela
