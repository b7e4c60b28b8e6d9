#include "vela/log_normal.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/exponential.hpp"
#include "distributions/log_scale.hpp"
#include "distributions/normal.hpp"
#include "distributions/standard_score.hpp"

#include <cmath>

namespace vela {
namespace distributions {
namespace {

double log_normal_pdf(double x, double location, double scale, double threshold) {
    if (std::islessequal(x, threshold)) {
        return 0.0;
    }
    const double logX = log_above(x, threshold);
    const double z = standard_score(logX, location, scale);
    if (z != z) {
        return MissingValue;
    }
    constexpr double vanishing = 100.0;  // the density is 0 beyond, however small x is
    constexpr double reciprocalRootTwoPi = 0.3989422804014327;
    return std::fabs(z) > vanishing ? 0.0 : conventions::value_unless_overflow(0.0, [=] {
        return reciprocalRootTwoPi * exp_over(0.5 * z * z + logX, scale);
    });
}

double log_normal_cdf(double x, double location, double scale, double threshold, bool upper) {
    if (std::islessequal(x, threshold)) {
        return upper ? 1.0 : 0.0;
    }
    if (x != x || threshold != threshold || location != location || !std::isgreater(scale, 0.0)) {
        return MissingValue;
    }
    return normal_cdf(log_above(x, threshold), location, scale, upper);
}

double log_normal_inv_cdf(double p, double location, double scale, double threshold) {
    if (p == 0.0) {
        return threshold;
    }
    if (!is_inner_probability(p) || !std::isgreater(scale, 0.0)) {
        return MissingValue;
    }
    const double z = normal_inv_cdf(p, 0.0, 1.0);
    const double logarithm = z == MissingValue ? z : from_standard_score(z, location, scale);
    return logarithm == MissingValue ? MissingValue : above_threshold(logarithm, threshold);
}

}  // namespace

}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double LogNormalPdf(double x, double location, double scale, double threshold) {
    return call<kIsOrdinary>(distributions::log_normal_pdf, x, location, scale, threshold);
}

void LogNormalPdf(double* out, const double* x, std::size_t n, double location, double scale,
                  double threshold) {
    call<kIsOrdinary>(distributions::log_normal_pdf, out, x, n, location, scale, threshold);
}

double LogNormalCdf(double x, double location, double scale, double threshold, bool upper) {
    return call<kIsOrdinary>(distributions::log_normal_cdf, x, location, scale, threshold, upper);
}

void LogNormalCdf(double* out, const double* x, std::size_t n, double location, double scale,
                  double threshold, bool upper) {
    call<kIsOrdinary>(distributions::log_normal_cdf, out, x, n, location, scale, threshold, upper);
}

double LogNormalInvCdf(double p, double location, double scale, double threshold) {
    return call<kGivesMissing>(distributions::log_normal_inv_cdf, p, location, scale, threshold);
}

void LogNormalInvCdf(double* out, const double* p, std::size_t n, double location, double scale,
                     double threshold) {
    call<kGivesMissing>(distributions::log_normal_inv_cdf, out, p, n, location, scale, threshold);
}

}  // namespace vela
