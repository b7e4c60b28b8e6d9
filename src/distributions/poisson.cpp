#include "vela/poisson.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/discrete_family.hpp"
#include "kernels/poisson.hpp"

namespace vela {
namespace distributions {
namespace {

double poisson_pdf(double x, double mean) { return mass_at(kernels::poisson_pdf, x, mean); }

double poisson_cdf(double x, double mean, bool upper) {
    return tails_at(kernels::poisson_df, x, mean).pick(upper);
}

double poisson_inv_cdf(double p, double mean) {
    return quantile_at(kernels::poisson_lower_quant, p, mean);
}

}  // namespace
}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double PoissonPdf(double x, double mean) {
    return call<kIsOrdinary>(distributions::poisson_pdf, x, mean);
}

void PoissonPdf(double* out, const double* x, std::size_t n, double mean) {
    call<kIsOrdinary>(distributions::poisson_pdf, out, x, n, mean);
}

double PoissonCdf(double x, double mean, bool upper) {
    return call<kGivesMissing>(distributions::poisson_cdf, x, mean, upper);
}

void PoissonCdf(double* out, const double* x, std::size_t n, double mean, bool upper) {
    call<kGivesMissing>(distributions::poisson_cdf, out, x, n, mean, upper);
}

double PoissonInvCdf(double p, double mean) {
    return call<kGivesMissing>(distributions::poisson_inv_cdf, p, mean);
}

void PoissonInvCdf(double* out, const double* p, std::size_t n, double mean) {
    call<kGivesMissing>(distributions::poisson_inv_cdf, out, p, n, mean);
}

}  // namespace vela
