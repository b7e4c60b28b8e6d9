#include "vela/log_logistic.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/log_scale.hpp"
#include "distributions/logistic.hpp"
#include "distributions/standard_score.hpp"

#include <cmath>

namespace vela {
namespace distributions {
namespace {

double log_logistic_pdf(double x, double location, double scale, double threshold) {
    if (std::islessequal(x, threshold)) {
        return 0.0;
    }
    const double logX = log_above(x, threshold);
    const double z = standard_score(logX, location, scale);
    return z == z ? logistic_density(z, logX, scale) : MissingValue;
}

double log_logistic_cdf(double x, double location, double scale, double threshold, bool upper) {
    if (std::islessequal(x, threshold)) {
        return upper ? 1.0 : 0.0;
    }
    return logistic_cdf(log_above(x, threshold), location, scale, upper);
}

double log_logistic_inv_cdf(double p, double location, double scale, double threshold) {
    if (p == 0.0) {
        return threshold;
    }
    if (!is_inner_probability(p) || !std::isgreater(scale, 0.0)) {
        return MissingValue;
    }
    const double logarithm = logistic_inv_cdf(p, location, scale);
    return logarithm == MissingValue ? MissingValue : above_threshold(logarithm, threshold);
}

}  // namespace

}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double LogLogisticPdf(double x, double location, double scale, double threshold) {
    return call<kIsOrdinary>(distributions::log_logistic_pdf, x, location, scale, threshold);
}

void LogLogisticPdf(double* out, const double* x, std::size_t n, double location, double scale,
                    double threshold) {
    call<kIsOrdinary>(distributions::log_logistic_pdf, out, x, n, location, scale, threshold);
}

double LogLogisticCdf(double x, double location, double scale, double threshold, bool upper) {
    return call<kIsOrdinary>(distributions::log_logistic_cdf, x, location, scale, threshold, upper);
}

void LogLogisticCdf(double* out, const double* x, std::size_t n, double location, double scale,
                    double threshold, bool upper) {
    call<kIsOrdinary>(distributions::log_logistic_cdf, out, x, n, location, scale, threshold,
                      upper);
}

double LogLogisticInvCdf(double p, double location, double scale, double threshold) {
    return call<kGivesMissing>(distributions::log_logistic_inv_cdf, p, location, scale, threshold);
}

void LogLogisticInvCdf(double* out, const double* p, std::size_t n, double location, double scale,
                       double threshold) {
    call<kGivesMissing>(distributions::log_logistic_inv_cdf, out, p, n, location, scale, threshold);
}

}  // namespace vela
