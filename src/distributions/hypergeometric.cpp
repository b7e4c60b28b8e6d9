#include "vela/hypergeometric.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/discrete_family.hpp"
#include "kernels/hypergeometric.hpp"

namespace vela {
namespace distributions {
namespace {

using kernels::Urn;

double hypergeometric_pdf(double x, int population, int events, int sample) {
    return mass_at(kernels::hypergeo_pdf, x, Urn{population, events, sample});
}

double hypergeometric_cdf(double x, int population, int events, int sample, bool upper) {
    return tails_at(kernels::hypergeo_df, x, Urn{population, events, sample}).pick(upper);
}

double hypergeometric_inv_cdf(double p, int population, int events, int sample) {
    return quantile_at(kernels::hypergeo_lower_quant, p, Urn{population, events, sample});
}

}  // namespace
}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double HypergeometricPdf(double x, int population, int events, int sample) {
    return call<kIsOrdinary>(distributions::hypergeometric_pdf, x, population, events, sample);
}

void HypergeometricPdf(double* out, const double* x, std::size_t n, int population, int events,
                       int sample) {
    call<kIsOrdinary>(distributions::hypergeometric_pdf, out, x, n, population, events, sample);
}

double HypergeometricCdf(double x, int population, int events, int sample, bool upper) {
    return call<kGivesMissing>(distributions::hypergeometric_cdf, x, population, events, sample,
                               upper);
}

void HypergeometricCdf(double* out, const double* x, std::size_t n, int population, int events,
                       int sample, bool upper) {
    call<kGivesMissing>(distributions::hypergeometric_cdf, out, x, n, population, events, sample,
                        upper);
}

double HypergeometricInvCdf(double p, int population, int events, int sample) {
    return call<kGivesMissing>(distributions::hypergeometric_inv_cdf, p, population, events,
                               sample);
}

void HypergeometricInvCdf(double* out, const double* p, std::size_t n, int population, int events,
                          int sample) {
    call<kGivesMissing>(distributions::hypergeometric_inv_cdf, out, p, n, population, events,
                        sample);
}

}  // namespace vela
