#include "vela/logistic.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/exponential.hpp"
#include "distributions/logistic.hpp"
#include "distributions/standard_score.hpp"
#include "kernels/fuzzy_compare.hpp"

#include <cmath>

namespace vela {
namespace distributions {

using kernels::safe_exp;
using kernels::safe_log;

double logistic_density(double z, double extraExponent, double scale) {
    const double magnitude = std::fabs(z);
    const double e = safe_exp(-magnitude);
    return conventions::value_unless_overflow(
        0.0, [=] { return exp_over(magnitude + extraExponent, scale) / ((1.0 + e) * (1.0 + e)); });
}

double logistic_cdf(double x, double location, double scale, bool upper) {
    const double z = standard_score(x, location, scale);
    if (z != z) {
        return MissingValue;
    }
    return conventions::value_unless_overflow(upper ? 1.0 : 0.0, [=] {
        const double e = safe_exp(-z);
        return (upper ? e : 1.0) / (1.0 + e);
    });
}

double logistic_inv_cdf(double p, double location, double scale) {
    if (p == p && kernels::fuzzy_compare(p, 0.5, 0.0) == 0) {
        return location;
    }
    return conventions::value_unless_overflow(MissingValue, [=] {
        return kernels::unstandardize(safe_log(p) - safe_log(1.0 - p), location, scale);
    });
}

namespace {

double logistic_pdf(double x, double location, double scale) {
    const double z = standard_score(x, location, scale);
    return z == z ? logistic_density(z, 0.0, scale) : MissingValue;
}

}  // namespace

}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double LogisticPdf(double x, double location, double scale) {
    return call<kIsOrdinary>(distributions::logistic_pdf, x, location, scale);
}

void LogisticPdf(double* out, const double* x, std::size_t n, double location, double scale) {
    call<kIsOrdinary>(distributions::logistic_pdf, out, x, n, location, scale);
}

double LogisticCdf(double x, double location, double scale, bool upper) {
    return call<kIsOrdinary>(distributions::logistic_cdf, x, location, scale, upper);
}

void LogisticCdf(double* out, const double* x, std::size_t n, double location, double scale,
                 bool upper) {
    call<kIsOrdinary>(distributions::logistic_cdf, out, x, n, location, scale, upper);
}

double LogisticInvCdf(double p, double location, double scale) {
    return call<kIsOrdinary>(distributions::logistic_inv_cdf, p, location, scale);
}

void LogisticInvCdf(double* out, const double* p, std::size_t n, double location, double scale) {
    call<kIsOrdinary>(distributions::logistic_inv_cdf, out, p, n, location, scale);
}

}  // namespace vela
