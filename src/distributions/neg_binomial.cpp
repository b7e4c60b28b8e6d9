#include "vela/neg_binomial.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/discrete_family.hpp"
#include "kernels/neg_binomial.hpp"

namespace vela {
namespace distributions {
namespace {

double neg_binomial_pdf(double x, double probability, double events) {
    return mass_at(kernels::neg_binomial_pdf, x, probability, events);
}

double neg_binomial_cdf(double x, double probability, double events, bool upper) {
    return tails_at(kernels::neg_binomial_df, x, probability, events).pick(upper);
}

double neg_binomial_inv_cdf(double p, double probability, double events) {
    return quantile_at(kernels::neg_binomial_lower_quant, p, probability, events);
}

}  // namespace
}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double NegBinomialPdf(double x, double probability, double events) {
    return call<kIsOrdinary>(distributions::neg_binomial_pdf, x, probability, events);
}

void NegBinomialPdf(double* out, const double* x, std::size_t n, double probability,
                    double events) {
    call<kIsOrdinary>(distributions::neg_binomial_pdf, out, x, n, probability, events);
}

double NegBinomialCdf(double x, double probability, double events, bool upper) {
    return call<kGivesMissing>(distributions::neg_binomial_cdf, x, probability, events, upper);
}

void NegBinomialCdf(double* out, const double* x, std::size_t n, double probability, double events,
                    bool upper) {
    call<kGivesMissing>(distributions::neg_binomial_cdf, out, x, n, probability, events, upper);
}

double NegBinomialInvCdf(double p, double probability, double events) {
    return call<kGivesMissing>(distributions::neg_binomial_inv_cdf, p, probability, events);
}

void NegBinomialInvCdf(double* out, const double* p, std::size_t n, double probability,
                       double events) {
    call<kGivesMissing>(distributions::neg_binomial_inv_cdf, out, p, n, probability, events);
}

}  // namespace vela
