#include "vela/t.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/t.hpp"
#include "distributions/tails.hpp"
#include "kernels/noncentral_t.hpp"
#include "kernels/student_t.hpp"

namespace vela {
namespace distributions {
namespace {

using conventions::kernel_failed;
using kernels::CentralT;

// The constants of the degrees of freedom are computed once for a whole array; the noncentral
// kernel has none worth keeping.

auto t_pdf(double df, double noncentrality) {
    return [=, central = CentralT(df)](double t) {
        const double density =
            noncentrality == 0.0 ? central.density(t) : kernels::t_npdf(t, df, noncentrality);
        return kernel_failed() ? MissingValue : density;
    };
}

auto t_cdf(double df, double noncentrality, bool upper) {
    return [=, central = CentralT(df)](double t) {
        const auto kernel = [&](double* lowerTail, double* upperTail) {
            if (noncentrality == 0.0) {
                central.tails(t, lowerTail, upperTail);
            } else {
                kernels::t_ncdf(t, df, noncentrality, lowerTail, upperTail);
            }
        };
        return tails_of(kernel).pick(upper);
    };
}

}  // namespace

double t_inv_cdf(double p, double df, double noncentrality) {
    double t = 0.0;
    kernels::inv_t_ncdf(p, df, noncentrality, &t);
    return kernel_failed() ? MissingValue : t;
}

double t_p_value(double t, double df, EAlternative alternative) {
    return p_value(tails_of(kernels::t_df, t, df), alternative);
}

}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double TPdf(double t, double df, double noncentrality) {
    return call<kIsOrdinary>(distributions::t_pdf, t, df, noncentrality);
}

void TPdf(double* out, const double* t, std::size_t n, double df, double noncentrality) {
    call<kIsOrdinary>(distributions::t_pdf, out, t, n, df, noncentrality);
}

double TCdf(double t, double df, double noncentrality, bool upper) {
    return call<kGivesMissing>(distributions::t_cdf, t, df, noncentrality, upper);
}

void TCdf(double* out, const double* t, std::size_t n, double df, double noncentrality,
          bool upper) {
    call<kGivesMissing>(distributions::t_cdf, out, t, n, df, noncentrality, upper);
}

double TInvCdf(double p, double df, double noncentrality) {
    return call<kGivesMissing>(distributions::t_inv_cdf, p, df, noncentrality);
}

void TInvCdf(double* out, const double* p, std::size_t n, double df, double noncentrality) {
    call<kGivesMissing>(distributions::t_inv_cdf, out, p, n, df, noncentrality);
}

}  // namespace vela
