#include "vela/laplace.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/exponential.hpp"
#include "distributions/standard_score.hpp"

#include <cmath>

namespace vela {
namespace distributions {
namespace {

double laplace_pdf(double x, double location, double scale) {
    const double z = standard_score(x, location, scale);
    if (z != z) {
        return MissingValue;
    }
    return conventions::value_unless_overflow(0.0,
                                              [=] { return 0.5 * exp_over(std::fabs(z), scale); });
}

double laplace_cdf(double x, double location, double scale, bool upper) {
    const double score = standard_score(x, location, scale);
    if (score != score) {
        return MissingValue;
    }
    const double z = upper ? -score : score;
    if (z <= 0.0) {
        return 0.5 * unit_exponential_tail(-z, true);
    }
    const double lower = unit_exponential_tail(z, false);
    return lower == MissingValue ? MissingValue : 0.5 + 0.5 * lower;
}

double laplace_inv_cdf(double p, double location, double scale) {
    if (!is_inner_probability(p)) {
        return MissingValue;
    }
    const double z = p <= 0.5 ? std::log(2.0 * p) : -std::log(2.0 * (1.0 - p));
    return from_standard_score(z, location, scale);
}

}  // namespace

}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double LaplacePdf(double x, double location, double scale) {
    return call<kIsOrdinary>(distributions::laplace_pdf, x, location, scale);
}

void LaplacePdf(double* out, const double* x, std::size_t n, double location, double scale) {
    call<kIsOrdinary>(distributions::laplace_pdf, out, x, n, location, scale);
}

double LaplaceCdf(double x, double location, double scale, bool upper) {
    return call<kIsOrdinary>(distributions::laplace_cdf, x, location, scale, upper);
}

void LaplaceCdf(double* out, const double* x, std::size_t n, double location, double scale,
                bool upper) {
    call<kIsOrdinary>(distributions::laplace_cdf, out, x, n, location, scale, upper);
}

double LaplaceInvCdf(double p, double location, double scale) {
    return call<kGivesMissing>(distributions::laplace_inv_cdf, p, location, scale);
}

void LaplaceInvCdf(double* out, const double* p, std::size_t n, double location, double scale) {
    call<kGivesMissing>(distributions::laplace_inv_cdf, out, p, n, location, scale);
}

}  // namespace vela
