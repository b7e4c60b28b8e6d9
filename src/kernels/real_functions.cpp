#include "kernels/real_functions.hpp"

#include "conventions/error_channel.hpp"
#include "kernels/beta_log.hpp"
#include "kernels/count.hpp"
#include "kernels/guarded.hpp"
#include "kernels/neg_binomial.hpp"
#include "kernels/noncentral_chi_square.hpp"
#include "kernels/noncentral_f.hpp"
#include "kernels/noncentral_t.hpp"
#include "kernels/normal.hpp"
#include "vela/missing_value.hpp"

#include <algorithm>
#include <cmath>

namespace vela::kernels {

using conventions::kernel_failed;

CmRealFunction::CmRealFunction(bool isInteger, double target, const Tolerances& tolerances)
    : m_isInteger(isInteger),
      m_target(target),
      m_absoluteXTolerance(tolerances.absoluteX),
      m_relativeXTolerance(tolerances.relativeX),
      m_absoluteFTolerance(tolerances.absoluteF),
      m_relativeFTolerance(tolerances.relativeF) {}

bool CmRealFunction::interval_converged(double a, double b) const {
    const double width = std::fabs(a - b);
    if (m_isInteger ? width < 2.0 : width < absolute_x_tolerance()) {
        return true;
    }
    return width < relative_x_tolerance() * std::max(std::fabs(a), std::fabs(b));
}

bool CmRealFunction::value_converged(double f) const {
    const double magnitude = std::fabs(f);
    return magnitude <= m_absoluteFTolerance ||
           magnitude <= std::fabs(m_target) * m_relativeFTolerance;
}

// The absolute tolerance of 1e-30 in x is for this far-tail search alone: its roots lie near -36.
CmStandardNormalCdf::CmStandardNormalCdf(double p)
    : CmRealFunction(false, p, {1e-30, 1e-12, 0.0, 1e-12}) {}

double CmStandardNormalCdf::evaluate(double x) {
    double lower = MissingValue;
    if (x == 0.0) {
        lower = 0.5;
    } else if (x != MissingValue) {
        double upper = 0.0;
        normal_df(x, &lower, &upper);
        if (kernel_failed()) {
            lower = MissingValue;
        }
    }
    return lower - target();
}

// The classes below subtract a probability of their own; the inherited target is that probability
// too, so that the relative tolerance in f refers to it.
CmTCdf::CmTCdf(double df, double noncentrality, double p)
    : CmRealFunction(false, p, {0.0, 1e-12, 0.0, 1e-12}),
      m_df(df),
      m_noncentrality(noncentrality),
      m_probability(p) {}

double CmTCdf::evaluate(double x) {
    if (x == MissingValue) {
        return MissingValue;
    }
    double lower = 0.0;
    double upper = 0.0;
    t_ncdf(x, m_df, m_noncentrality, &lower, &upper);
    return kernel_failed() ? MissingValue : lower - m_probability;
}

CmChiSqCdf::CmChiSqCdf(double df, double noncentrality, double p)
    : CmRealFunction(false, p, {0.0, 1e-12, 0.0, 1e-12}),
      m_df(df),
      m_noncentrality(noncentrality),
      m_probability(p) {}

double CmChiSqCdf::evaluate(double x) {
    double lower = 0.0;
    if (!std::islessequal(x, 0.0)) {
        double upper = 0.0;
        chi2_ncdf(x, m_df, m_noncentrality, &lower, &upper);
        if (kernel_failed()) {
            return MissingValue;
        }
    }
    return lower - m_probability;
}

CmFCdf::CmFCdf(double df1, double df2, double noncentrality, double p)
    : CmRealFunction(false, p, {0.0, 1e-12, 0.0, 1e-12}),
      m_df1(df1),
      m_df2(df2),
      m_noncentrality(noncentrality),
      m_probability(p) {}

double CmFCdf::evaluate(double x) {
    double lower = 0.0;
    double upper = 0.0;
    F_ncdf(x, m_df1, m_df2, m_noncentrality, &lower, &upper);
    return kernel_failed() ? MissingValue : lower - m_probability;
}

CmGammaCdf::CmGammaCdf(double shape, double p)
    : CmRealFunction(false, p, {0.0, 1e-12, 0.0, 1e-12}), m_shape(shape), m_probability(p) {}

double CmGammaCdf::evaluate(double x) {
    double P = 0.0;
    if (!std::isless(x, 0.0)) {
        double Q = 0.0;
        m_shape.pq(x, &P, &Q, nullptr);
        if (kernel_failed()) {
            return MissingValue;
        }
    }
    return P - m_probability;
}

CmNegBinomialCdf::CmNegBinomialCdf(double eventProbability, double eventCount, double p)
    : CmRealFunction(true, p, {0.0, 1e-12, 0.0, 1e-12}),
      m_eventProbability(eventProbability),
      m_eventCount(eventCount),
      m_probability(p) {}

double CmNegBinomialCdf::evaluate(double x) {
    double lower = 0.0;
    if (!std::isless(x, 0.0)) {
        double upper = 0.0;
        neg_binomial_df(count_at(x).k, m_eventProbability, m_eventCount, &lower, &upper);
        if (kernel_failed()) {
            return MissingValue;
        }
    }
    return lower - m_probability;
}

CmLambdaTransform::CmLambdaTransform(double lambda, double target)
    : CmRealFunction(false, target, {0.0, 1e-12, 0.0, 1e-12}), m_lambda(lambda) {}

double CmLambdaTransform::evaluate(double x) {
    if (m_lambda == 0.0) {
        return safe_log(x) - safe_log(1.0 - x) - target();  // the limit, a logistic quantile
    }
    return (safe_pow(x, m_lambda) - safe_pow(1.0 - x, m_lambda)) / m_lambda - target();
}

CmLRatio::CmLRatio(double trials, double eventProbability, double target)
    : CmRealFunction(true, target, {0.0, 1e-12, 0.0, 1e-12}),
      m_trials(trials),
      m_eventProbability(eventProbability) {}

double CmLRatio::evaluate(double x) {
    if (!std::isgreaterequal(x, 0.0) || !std::islessequal(x, m_trials)) {
        return MissingValue;
    }
    const auto deviance_of = [](double count, double expected) {
        return count == 0.0 ? expected
                            : deviance(count, two_sum(expected, -count), {expected, 0.0}).hi;
    };
    const double events = std::floor(x);
    return 2.0 * (deviance_of(events, m_trials * m_eventProbability) +
                  deviance_of(m_trials - events, m_trials * (1.0 - m_eventProbability))) -
           target();
}

}  // namespace vela::kernels
