#include "vela/geometric.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/discrete_family.hpp"
#include "kernels/neg_binomial.hpp"

namespace vela {
namespace distributions {
namespace {

double geometric_pdf(double x, double probability) {
    return mass_at(kernels::geometric_pdf, x, probability);
}

double geometric_cdf(double x, double probability, bool upper) {
    return tails_at(kernels::geometric_df, x, probability).pick(upper);
}

double geometric_inv_cdf(double p, double probability) {
    return quantile_at(kernels::geometric_lower_quant, p, probability);
}

}  // namespace
}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double GeometricPdf(double x, double probability) {
    return call<kIsOrdinary>(distributions::geometric_pdf, x, probability);
}

void GeometricPdf(double* out, const double* x, std::size_t n, double probability) {
    call<kIsOrdinary>(distributions::geometric_pdf, out, x, n, probability);
}

double GeometricCdf(double x, double probability, bool upper) {
    return call<kGivesMissing>(distributions::geometric_cdf, x, probability, upper);
}

void GeometricCdf(double* out, const double* x, std::size_t n, double probability, bool upper) {
    call<kGivesMissing>(distributions::geometric_cdf, out, x, n, probability, upper);
}

double GeometricInvCdf(double p, double probability) {
    return call<kGivesMissing>(distributions::geometric_inv_cdf, p, probability);
}

void GeometricInvCdf(double* out, const double* p, std::size_t n, double probability) {
    call<kGivesMissing>(distributions::geometric_inv_cdf, out, p, n, probability);
}

}  // namespace vela
