#include "vela/gamma.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/standard_score.hpp"
#include "distributions/tails.hpp"
#include "kernels/gamma_quantile.hpp"
#include "kernels/incomplete_gamma.hpp"
#include "kernels/saddle_point.hpp"

#include <cmath>

namespace vela {
namespace distributions {
namespace {

using conventions::kernel_failed;
using kernels::poisson_mass;

double gamma_pdf(double x, double shape, double scale, double threshold) {
    if (std::islessequal(x, threshold)) {
        return 0.0;
    }
    const double z = standard_score(x, threshold, scale);
    if (z != z || !std::isgreater(shape, 0.0)) {
        return MissingValue;
    }
    if (std::isinf(z) || std::isinf(shape) || z == 0.0) {
        return 0.0;
    }
    return conventions::value_unless_overflow(0.0, [=] {
        return shape < 1.0 ? poisson_mass(shape, z) / z * shape / scale
                           : poisson_mass(shape - 1.0, z) / scale;
    });
}

// What depends on the shape alone is computed once for a whole array.

auto gamma_cdf(double shape, double scale, double threshold, bool upper) {
    return [=, gamma = kernels::gamma_shape(shape)](double x) {
        if (std::islessequal(x, threshold)) {
            return upper ? 1.0 : 0.0;
        }
        const double z = standard_score(x, threshold, scale);
        if (z != z) {
            return MissingValue;
        }
        const auto kernel = [&](double* lowerTail, double* upperTail) {
            gamma.pq(z, lowerTail, upperTail, nullptr);
        };
        return tails_of(kernel).pick(upper);
    };
}

auto gamma_inv_cdf(double shape, double scale, double threshold) {
    return [=, quantile = kernels::GammaQuantile(shape)](double p) {
        double z = 0.0;
        quantile.find(p, &z);
        return kernel_failed() ? MissingValue : from_standard_score(z, threshold, scale);
    };
}

}  // namespace

}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double GammaPdf(double x, double shape, double scale, double threshold) {
    return call<kIsOrdinary>(distributions::gamma_pdf, x, shape, scale, threshold);
}

void GammaPdf(double* out, const double* x, std::size_t n, double shape, double scale,
              double threshold) {
    call<kIsOrdinary>(distributions::gamma_pdf, out, x, n, shape, scale, threshold);
}

double GammaCdf(double x, double shape, double scale, double threshold, bool upper) {
    return call<kGivesMissing>(distributions::gamma_cdf, x, shape, scale, threshold, upper);
}

void GammaCdf(double* out, const double* x, std::size_t n, double shape, double scale,
              double threshold, bool upper) {
    call<kGivesMissing>(distributions::gamma_cdf, out, x, n, shape, scale, threshold, upper);
}

double GammaInvCdf(double p, double shape, double scale, double threshold) {
    return call<kGivesMissing>(distributions::gamma_inv_cdf, p, shape, scale, threshold);
}

void GammaInvCdf(double* out, const double* p, std::size_t n, double shape, double scale,
                 double threshold) {
    call<kGivesMissing>(distributions::gamma_inv_cdf, out, p, n, shape, scale, threshold);
}

}  // namespace vela
