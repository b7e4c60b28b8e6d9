#include "vela/binomial.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/discrete_family.hpp"
#include "kernels/binomial.hpp"

namespace vela {
namespace distributions {
namespace {

double binomial_pdf(double x, int trials, double probability) {
    return mass_at(kernels::binomial_pdf, x, trials, probability);
}

double binomial_cdf(double x, double trials, double probability, bool upper) {
    const kernels::Count n = kernels::count_at(trials);
    if (!n.isWhole) {
        return MissingValue;
    }
    return tails_at(kernels::binomial_df, x, n.k, probability).pick(upper);
}

double binomial_inv_cdf(double p, int trials, double probability) {
    return quantile_at(kernels::binomial_lower_quant, p, trials, probability);
}

}  // namespace
}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double BinomialPdf(double x, int trials, double probability) {
    return call<kIsOrdinary>(distributions::binomial_pdf, x, trials, probability);
}

void BinomialPdf(double* out, const double* x, std::size_t n, int trials, double probability) {
    call<kIsOrdinary>(distributions::binomial_pdf, out, x, n, trials, probability);
}

double BinomialCdf(double x, double trials, double probability, bool upper) {
    return call<kGivesMissing>(distributions::binomial_cdf, x, trials, probability, upper);
}

void BinomialCdf(double* out, const double* x, std::size_t n, double trials, double probability,
                 bool upper) {
    call<kGivesMissing>(distributions::binomial_cdf, out, x, n, trials, probability, upper);
}

double BinomialInvCdf(double p, int trials, double probability) {
    return call<kGivesMissing>(distributions::binomial_inv_cdf, p, trials, probability);
}

void BinomialInvCdf(double* out, const double* p, std::size_t n, int trials, double probability) {
    call<kGivesMissing>(distributions::binomial_inv_cdf, out, p, n, trials, probability);
}

}  // namespace vela
