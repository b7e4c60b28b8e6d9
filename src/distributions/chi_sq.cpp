#include "vela/chi_sq.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/chi_sq.hpp"
#include "distributions/tails.hpp"
#include "kernels/chi_square_quantile.hpp"
#include "kernels/incomplete_gamma.hpp"
#include "kernels/limits.hpp"
#include "kernels/noncentral_chi_square.hpp"
#include "kernels/saddle_point.hpp"

#include <cmath>
#include <limits>

namespace vela {
namespace distributions {
namespace {

using conventions::kernel_failed;
using kernels::ChiSquareQuantile;
using kernels::kLargestDouble;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

double chi_sq_pdf(double x, double df) {
    if (x != x || !std::isgreater(df, 0.0) || df > kLargestDouble) {
        return MissingValue;
    }
    if (x < 0.0 || x > kLargestDouble) {
        return 0.0;
    }
    const double a = 0.5 * df;
    if (a >= 1.0) {
        return 0.5 * kernels::poisson_mass(a - 1.0, 0.5 * x);
    }
    // The mass at a - 1 < 0 by the recurrence from the one at a; next to 0 it may be too large.
    const double mass = a * kernels::poisson_mass(a, 0.5 * x);
    const bool isTooLarge = x < 1.0 && mass > x * kLargestDouble;
    return x == 0.0 || isTooLarge ? kInfinity : mass / x;
}

// The constants of the central distribution are computed once for a whole array; the noncentral
// kernels have none worth keeping.

auto chi_sq_cdf(double df, double noncentrality, bool upper) {
    return [=, central = kernels::gamma_shape(0.5 * df)](double x) {
        if (std::islessequal(x, 0.0)) {
            return upper ? 1.0 : 0.0;
        }
        const auto kernel = [&](double* lowerTail, double* upperTail) {
            if (noncentrality == 0.0 && std::islessequal(x, kLargestDouble)) {
                central.pq(0.5 * x, lowerTail, upperTail, nullptr);
            } else {
                kernels::chi2_ncdf(x, df, noncentrality, lowerTail, upperTail);
            }
        };
        return tails_of(kernel).pick(upper);
    };
}

auto chi_sq_inv_cdf(double df, double noncentrality) {
    return [=, central = ChiSquareQuantile(df)](double p) {
        double x = 0.0;
        if (noncentrality == 0.0) {
            central.find(p, &x);
        } else {
            kernels::inv_chi2_ncdf(p, df, noncentrality, &x);
        }
        return kernel_failed() ? MissingValue : x;
    };
}

}  // namespace

double central_chi_sq_inv_cdf(double p, double df) { return chi_sq_inv_cdf(df, 0.0)(p); }

double chi_sq_p_value(double x, double df, EAlternative alternative) {
    const Tails tails =
        std::islessequal(x, 0.0) ? Tails{0.0, 1.0} : tails_of(kernels::chi2_ncdf, x, df, 0.0);
    return p_value(tails, alternative);
}

}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double ChiSqPdf(double x, double df) { return call<kIsOrdinary>(distributions::chi_sq_pdf, x, df); }

void ChiSqPdf(double* out, const double* x, std::size_t n, double df) {
    call<kIsOrdinary>(distributions::chi_sq_pdf, out, x, n, df);
}

double ChiSqCdf(double x, double df, double noncentrality, bool upper) {
    return call<kGivesMissing>(distributions::chi_sq_cdf, x, df, noncentrality, upper);
}

void ChiSqCdf(double* out, const double* x, std::size_t n, double df, double noncentrality,
              bool upper) {
    call<kGivesMissing>(distributions::chi_sq_cdf, out, x, n, df, noncentrality, upper);
}

double ChiSqInvCdf(double p, double df, double noncentrality) {
    return call<kGivesMissing>(distributions::chi_sq_inv_cdf, p, df, noncentrality);
}

void ChiSqInvCdf(double* out, const double* p, std::size_t n, double df, double noncentrality) {
    call<kGivesMissing>(distributions::chi_sq_inv_cdf, out, p, n, df, noncentrality);
}

}  // namespace vela
