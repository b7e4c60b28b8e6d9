#include "vela/smallest_extreme_value.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/extreme_value.hpp"
#include "distributions/standard_score.hpp"

#include <cmath>

namespace vela {
namespace distributions {
namespace {

double smallest_extreme_value_pdf(double x, double location, double scale) {
    const double z = standard_score(x, location, scale);
    return z == z ? extreme_value_density(z, scale) : MissingValue;
}

double smallest_extreme_value_cdf(double x, double location, double scale, bool upper) {
    const double z = standard_score(x, location, scale);
    return z == z ? extreme_value_tail(z, upper) : MissingValue;
}

double smallest_extreme_value_inv_cdf(double p, double location, double scale) {
    if (!is_inner_probability(p)) {
        return MissingValue;
    }
    return from_standard_score(std::log(-std::log1p(-p)), location, scale);
}

}  // namespace

}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double SmallestExtremeValuePdf(double x, double location, double scale) {
    return call<kIsOrdinary>(distributions::smallest_extreme_value_pdf, x, location, scale);
}

void SmallestExtremeValuePdf(double* out, const double* x, std::size_t n, double location,
                             double scale) {
    call<kIsOrdinary>(distributions::smallest_extreme_value_pdf, out, x, n, location, scale);
}

double SmallestExtremeValueCdf(double x, double location, double scale, bool upper) {
    return call<kIsOrdinary>(distributions::smallest_extreme_value_cdf, x, location, scale, upper);
}

void SmallestExtremeValueCdf(double* out, const double* x, std::size_t n, double location,
                             double scale, bool upper) {
    call<kIsOrdinary>(distributions::smallest_extreme_value_cdf, out, x, n, location, scale, upper);
}

double SmallestExtremeValueInvCdf(double p, double location, double scale) {
    return call<kGivesMissing>(distributions::smallest_extreme_value_inv_cdf, p, location, scale);
}

void SmallestExtremeValueInvCdf(double* out, const double* p, std::size_t n, double location,
                                double scale) {
    call<kGivesMissing>(distributions::smallest_extreme_value_inv_cdf, out, p, n, location, scale);
}

}  // namespace vela
