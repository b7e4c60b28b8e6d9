#include "vela/normal.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/normal.hpp"
#include "kernels/guarded.hpp"
#include "kernels/location_scale.hpp"

#include <cmath>

namespace vela {
namespace distributions {

using kernels::normal_df;
using kernels::safe_exp;
using kernels::standardize;

double normal_pdf(double x, double mean, double sd) {
    return conventions::value_unless_overflow(0.0, [=] {
        const double z = (x - mean) / sd;
        return safe_exp(-0.5 * z * z) / (std::sqrt(6.283185307179586) * sd);
    });
}

double normal_cdf(double x, double mean, double sd, bool upper) {
    if (x == mean) {
        return 0.5;  // whatever sd is
    }
    return tails_of(normal_df, standardize(x, mean, sd)).pick(upper);
}

double normal_p_value(double z, EAlternative alternative) {
    const Tails tails = z == 0.0 ? Tails{0.5, 0.5} : tails_of(normal_df, z);
    return p_value(tails, alternative);
}

}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double NormalPdf(double x, double mean, double sd) {
    return call<kIsOrdinary>(distributions::normal_pdf, x, mean, sd);
}

void NormalPdf(double* out, const double* x, std::size_t n, double mean, double sd) {
    call<kIsOrdinary>(distributions::normal_pdf, out, x, n, mean, sd);
}

double NormalCdf(double x, double mean, double sd, bool upper) {
    return call<kGivesMissing>(distributions::normal_cdf, x, mean, sd, upper);
}

void NormalCdf(double* out, const double* x, std::size_t n, double mean, double sd, bool upper) {
    call<kGivesMissing>(distributions::normal_cdf, out, x, n, mean, sd, upper);
}

double NormalInvCdf(double p, double mean, double sd) {
    return call<kGivesMissing>(distributions::normal_inv_cdf, p, mean, sd);
}

void NormalInvCdf(double* out, const double* p, std::size_t n, double mean, double sd) {
    call<kGivesMissing>(distributions::normal_inv_cdf, out, p, n, mean, sd);
}

}  // namespace vela
