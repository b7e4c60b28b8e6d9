#include "vela/f.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/f.hpp"
#include "distributions/tails.hpp"
#include "kernels/f_central.hpp"
#include "kernels/noncentral_f.hpp"

#include <cmath>

namespace vela {
namespace distributions {
namespace {

using conventions::kernel_failed;
using kernels::CentralF;

// The constants of the central distribution are computed once for a whole array; the noncentral
// kernel has none worth keeping.

auto f_pdf(double df1, double df2) {
    return [central = CentralF(df1, df2)](double x) {
        const double density = central.density(x);
        return kernel_failed() ? MissingValue : density;
    };
}

auto f_cdf(double df1, double df2, double noncentrality, bool upper) {
    return [=, central = CentralF(df1, df2)](double x) {
        const auto kernel = [&](double* lowerTail, double* upperTail) {
            if (noncentrality == 0.0) {
                central.tails(x, lowerTail, upperTail);
            } else {
                kernels::F_ncdf(x, df1, df2, noncentrality, lowerTail, upperTail);
            }
        };
        return tails_of(kernel).pick(upper);
    };
}

}  // namespace

double f_inv_cdf(double p, double df1, double df2, double noncentrality) {
    double x = 0.0;
    kernels::inv_F_ncdf(p, df1, df2, noncentrality, &x);
    return kernel_failed() ? MissingValue : x;
}

double f_p_value(double f, double df1, double df2, EAlternative alternative) {
    const Tails tails =
        std::islessequal(f, 0.0) ? Tails{0.0, 1.0} : tails_of(kernels::F_ncdf, f, df1, df2, 0.0);
    return p_value(tails, alternative);
}

}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double FPdf(double x, double df1, double df2) {
    return call<kIsOrdinary>(distributions::f_pdf, x, df1, df2);
}

void FPdf(double* out, const double* x, std::size_t n, double df1, double df2) {
    call<kIsOrdinary>(distributions::f_pdf, out, x, n, df1, df2);
}

double FCdf(double x, double df1, double df2, double noncentrality, bool upper) {
    return call<kGivesMissing>(distributions::f_cdf, x, df1, df2, noncentrality, upper);
}

void FCdf(double* out, const double* x, std::size_t n, double df1, double df2, double noncentrality,
          bool upper) {
    call<kGivesMissing>(distributions::f_cdf, out, x, n, df1, df2, noncentrality, upper);
}

double FInvCdf(double p, double df1, double df2, double noncentrality) {
    return call<kGivesMissing>(distributions::f_inv_cdf, p, df1, df2, noncentrality);
}

void FInvCdf(double* out, const double* p, std::size_t n, double df1, double df2,
             double noncentrality) {
    call<kGivesMissing>(distributions::f_inv_cdf, out, p, n, df1, df2, noncentrality);
}

}  // namespace vela
