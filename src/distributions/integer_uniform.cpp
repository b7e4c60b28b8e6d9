#include "vela/integer_uniform.hpp"

#include "conventions/call_frame.hpp"
#include "conventions/error_channel.hpp"
#include "distributions/tails.hpp"
#include "kernels/count.hpp"
#include "kernels/discrete_quantile.hpp"

#include <algorithm>
#include <cmath>

namespace vela {
namespace distributions {
namespace {

struct Outcomes {
    double smallest;
    double largest;

    double size() const { return largest - smallest + 1.0; }
    void tails(double k, double* lower, double* upper) const {
        *lower = (k - smallest + 1.0) / size();
        *upper = (largest - k) / size();
    }
};

double integer_uniform_pdf(double x, int smallest, int largest) {
    if (x != x || smallest > largest) {
        return MissingValue;
    }
    const kernels::Count count = kernels::count_at(x);
    const bool isOutcome = count.isWhole && count.k >= smallest && count.k <= largest;
    return isOutcome ? 1.0 / Outcomes{smallest + 0.0, largest + 0.0}.size() : 0.0;
}

double integer_uniform_cdf(double x, int smallest, int largest, bool upper) {
    if (x != x || smallest > largest) {
        return MissingValue;
    }
    const Outcomes outcomes{smallest + 0.0, largest + 0.0};
    Tails tails{};
    const double k = std::clamp(kernels::count_at(x).k, outcomes.smallest - 1.0, outcomes.largest);
    outcomes.tails(k, &tails.lower, &tails.upper);
    return tails.pick(upper);
}

double integer_uniform_inv_cdf(double p, int smallest, int largest) {
    conventions::enter_kernel("integer_uniform_quant");
    if (!std::isgreaterequal(p, 0.0) || !std::islessequal(p, 1.0) || smallest > largest) {
        return MissingValue;
    }
    const Outcomes outcomes{smallest + 0.0, largest + 0.0};
    const double start = smallest - 1.0 + std::ceil(p * outcomes.size());  // off by one at most
    double k = 0.0;
    kernels::find_discrete_quantile("integer_uniform_quant", p,
                                    {start, 0.0, 0.0, outcomes.smallest, outcomes.largest, true},
                                    outcomes, &k);
    return conventions::kernel_failed() ? MissingValue : k;
}

}  // namespace
}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double IntegerUniformPdf(double x, int smallest, int largest) {
    return call<kIsOrdinary>(distributions::integer_uniform_pdf, x, smallest, largest);
}

void IntegerUniformPdf(double* out, const double* x, std::size_t n, int smallest, int largest) {
    call<kIsOrdinary>(distributions::integer_uniform_pdf, out, x, n, smallest, largest);
}

double IntegerUniformCdf(double x, int smallest, int largest, bool upper) {
    return call<kGivesMissing>(distributions::integer_uniform_cdf, x, smallest, largest, upper);
}

void IntegerUniformCdf(double* out, const double* x, std::size_t n, int smallest, int largest,
                       bool upper) {
    call<kGivesMissing>(distributions::integer_uniform_cdf, out, x, n, smallest, largest, upper);
}

double IntegerUniformInvCdf(double p, int smallest, int largest) {
    return call<kGivesMissing>(distributions::integer_uniform_inv_cdf, p, smallest, largest);
}

void IntegerUniformInvCdf(double* out, const double* p, std::size_t n, int smallest, int largest) {
    call<kGivesMissing>(distributions::integer_uniform_inv_cdf, out, p, n, smallest, largest);
}

}  // namespace vela
