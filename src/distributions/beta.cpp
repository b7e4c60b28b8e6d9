#include "vela/beta.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/tails.hpp"
#include "kernels/beta.hpp"
#include "kernels/beta_power.hpp"
#include "kernels/beta_quantile.hpp"

#include <cmath>
#include <limits>

namespace vela {
namespace distributions {
namespace {

using conventions::kernel_failed;
using kernels::BetaPoint;
using kernels::BetaPower;
using kernels::BetaQuantile;
using kernels::BetaShapes;

/// What the prepared kernels take; NaN fails too.
bool is_in_range(double shape) {
    return std::isgreaterequal(shape, 1e-150) && std::islessequal(shape, 1e150);
}

/// The density at an end of the support, where the distance to that end is raised to shape - 1.
double end_density(double shape, double other) {
    if (shape == 1.0) {
        return other;
    }
    return shape < 1.0 ? std::numeric_limits<double>::infinity() : 0.0;
}

auto beta_pdf(double first, double second) {
    const bool isValid = is_in_range(first) && is_in_range(second);
    return [=, power = BetaPower(isValid ? first : 1.0, isValid ? second : 1.0)](double x) {
        if (!isValid || x != x) {
            return MissingValue;
        }
        if (x < 0.0 || x > 1.0) {
            return 0.0;
        }
        if (x == 0.0 || x == 1.0) {
            return x == 0.0 ? end_density(first, second) : end_density(second, first);
        }
        return power.density(BetaPoint::from_doubles(x, 1.0 - x));
    };
}

auto beta_cdf(double first, double second, bool upper) {
    const bool isValid = is_in_range(first) && is_in_range(second);
    return [=, shapes = BetaShapes(isValid ? first : 1.0, isValid ? second : 1.0)](double x) {
        const auto kernel = [&](double* lowerTail, double* upperTail) {
            if (!isValid || !std::isgreater(x, 0.0) || !std::isless(x, 1.0)) {
                // the ends of the support, and reports on bad arguments
                const double end = std::fmin(std::fmax(x, 0.0), 1.0);
                kernels::beta_df(x == x ? end : x, 1.0 - end, first, second, lowerTail, upperTail);
                return;
            }
            conventions::enter_kernel("beta_df");
            shapes.tails(BetaPoint::from_doubles(x, 1.0 - x), lowerTail, upperTail);
        };
        return tails_of(kernel).pick(upper);
    };
}

auto beta_inv_cdf(double first, double second) {
    return [quantile = BetaQuantile(first, second)](double p) {
        double x = 0.0;
        double y = 0.0;
        quantile.find(p, 1.0 - p, &x, &y);
        return kernel_failed() ? MissingValue : x;
    };
}

}  // namespace
}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double BetaPdf(double x, double first, double second) {
    return call<kIsOrdinary>(distributions::beta_pdf, x, first, second);
}

void BetaPdf(double* out, const double* x, std::size_t n, double first, double second) {
    call<kIsOrdinary>(distributions::beta_pdf, out, x, n, first, second);
}

double BetaCdf(double x, double first, double second, bool upper) {
    return call<kGivesMissing>(distributions::beta_cdf, x, first, second, upper);
}

void BetaCdf(double* out, const double* x, std::size_t n, double first, double second, bool upper) {
    call<kGivesMissing>(distributions::beta_cdf, out, x, n, first, second, upper);
}

double BetaInvCdf(double p, double first, double second) {
    return call<kGivesMissing>(distributions::beta_inv_cdf, p, first, second);
}

void BetaInvCdf(double* out, const double* p, std::size_t n, double first, double second) {
    call<kGivesMissing>(distributions::beta_inv_cdf, out, p, n, first, second);
}

}  // namespace vela
