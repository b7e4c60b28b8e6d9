#include "vela/cauchy.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/standard_score.hpp"

#include <cmath>

namespace vela {
namespace distributions {
namespace {

constexpr double kPi = 3.141592653589793;

double cauchy_pdf(double x, double location, double scale) {
    const double z = standard_score(x, location, scale);
    if (z != z) {
        return MissingValue;
    }
    const double magnitude = std::fabs(z);
    const double w = magnitude > 1.0 ? 1.0 / magnitude : magnitude;  // its square cannot overflow
    const double ratio = (magnitude > 1.0 ? w * w : 1.0) / (1.0 + w * w);
    return conventions::value_unless_overflow(0.0, [=] { return ratio / kPi / scale; });
}

double cauchy_cdf(double x, double location, double scale, bool upper) {
    const double z = standard_score(x, location, scale);
    return z == z ? std::atan(upper ? -z : z) / kPi + 0.5 : MissingValue;
}

double cauchy_inv_cdf(double p, double location, double scale) {
    if (!is_inner_probability(p)) {
        return MissingValue;
    }
    // The tangent next to its zero, or the reciprocal of one next to its own: no digits are lost.
    return conventions::value_unless_overflow(MissingValue, [=] {
        const double z = p < 0.25   ? -1.0 / std::tan(kPi * p)
                         : p > 0.75 ? 1.0 / std::tan(kPi * (1.0 - p))
                                    : std::tan(kPi * (p - 0.5));
        return from_standard_score(z, location, scale);
    });
}

}  // namespace

}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double CauchyPdf(double x, double location, double scale) {
    return call<kIsOrdinary>(distributions::cauchy_pdf, x, location, scale);
}

void CauchyPdf(double* out, const double* x, std::size_t n, double location, double scale) {
    call<kIsOrdinary>(distributions::cauchy_pdf, out, x, n, location, scale);
}

double CauchyCdf(double x, double location, double scale, bool upper) {
    return call<kIsOrdinary>(distributions::cauchy_cdf, x, location, scale, upper);
}

void CauchyCdf(double* out, const double* x, std::size_t n, double location, double scale,
               bool upper) {
    call<kIsOrdinary>(distributions::cauchy_cdf, out, x, n, location, scale, upper);
}

double CauchyInvCdf(double p, double location, double scale) {
    return call<kGivesMissing>(distributions::cauchy_inv_cdf, p, location, scale);
}

void CauchyInvCdf(double* out, const double* p, std::size_t n, double location, double scale) {
    call<kGivesMissing>(distributions::cauchy_inv_cdf, out, p, n, location, scale);
}

}  // namespace vela
