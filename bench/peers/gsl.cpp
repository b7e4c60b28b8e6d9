// GSL. It has no noncentral families and no quantiles of counts; its handler, which ends the
// process on an error, is turned off.

#include "functions.hpp"

#include <gsl/gsl_cdf.h>
#include <gsl/gsl_errno.h>
#include <gsl/gsl_randist.h>
#include <gsl/gsl_statistics_double.h>
#include <gsl/gsl_version.h>

#include <cmath>
#include <vector>

namespace bench {
namespace {

using P = Parameters;

double mean_and_variance(const double* x, std::size_t n) {
    const double mean = gsl_stats_mean(x, 1, n);
    return mean + gsl_stats_variance_m(x, 1, n, mean);
}

/// Its own coefficients are g1 and g2 with the sample standard deviation.
double skewness_and_kurtosis(const double* x, std::size_t n) {
    const double count = static_cast<double>(n);
    const double mean = gsl_stats_mean(x, 1, n);
    const double sd = gsl_stats_sd_m(x, 1, n, mean);
    const double b1 = gsl_stats_skew_m_sd(x, 1, n, mean, sd);
    const double b2 = gsl_stats_kurtosis_m_sd(x, 1, n, mean, sd) + 3.0;
    return b1 * count * count / ((count - 1.0) * (count - 2.0)) +
           (b2 * count * count * (count + 1.0) / (count - 1.0) -
            3.0 * (count - 1.0) * (count - 1.0)) /
               ((count - 2.0) * (count - 3.0));
}

double covariance(const double* x, std::size_t n) {
    return gsl_stats_covariance(x, 1, x + n / 2, 1, n / 2);
}

double one_sample_t(const double* x, std::size_t n) {
    const double count = static_cast<double>(n);
    const double mean = gsl_stats_mean(x, 1, n);
    const double se = gsl_stats_sd_m(x, 1, n, mean) / std::sqrt(count);
    const double half = gsl_cdf_tdist_Pinv(0.5 + 0.5 * kConfidence, count - 1.0) * se;
    const double statistic = (mean - kHypothesizedMean) / se;
    const double pValue = 2.0 * gsl_cdf_tdist_Q(std::abs(statistic), count - 1.0);
    return (mean - half) + (mean + half) + pValue;
}

unsigned count(double x) { return static_cast<unsigned>(x); }

/// Calls function(x, the first parameters...).
template <auto function, std::size_t... i>
double call(double x, const P& p) {
    return function(x, p[i]...);
}

/// The functions of counts take the count and the parameters in their own types and orders.
template <auto function>
double binomial(double x, const P& p) {
    return function(count(x), p[1], count(p[0]));
}
template <auto function>
double neg_binomial(double x, const P& p) {
    return function(count(x), p[0], p[1]);
}
template <auto function>
double poisson(double x, const P& p) {
    return function(count(x), p[0]);
}
template <auto function>
double hypergeometric(double x, const P& p) {
    return function(count(x), count(p[1]), count(p[0] - p[1]), count(p[2]));
}
/// Its count includes the event.
template <auto function>
double geometric(double x, const P& p) {
    return function(count(x) + 1, p[0]);
}

/// Location and scale, where its own function knows a scale only.
template <auto function>
double located(double x, const P& p) {
    return function(x - p[0], p[1]);
}
template <auto quantile>
double located_quantile(double x, const P& p) {
    return p[0] + quantile(x, p[1]);
}

template <auto density, auto lower, auto upper, auto quantile>
void add_located(std::vector<PointFunction>& all, const char* family) {
    add_family<located<density>, located<lower>, located<upper>, located_quantile<quantile>>(
        all, family);
}

template <auto density, auto lower, auto upper, auto quantile, std::size_t... i>
void add(std::vector<PointFunction>& all, const char* family) {
    add_family<call<density, i...>, call<lower, i...>, call<upper, i...>, call<quantile, i...>>(
        all, family);
}

std::vector<PointFunction> families() {
    std::vector<PointFunction> all;
    add_located<gsl_ran_gaussian_pdf, gsl_cdf_gaussian_P, gsl_cdf_gaussian_Q,
                gsl_cdf_gaussian_Pinv>(all, "Normal");
    add<gsl_ran_tdist_pdf, gsl_cdf_tdist_P, gsl_cdf_tdist_Q, gsl_cdf_tdist_Pinv, 0>(all, "T");
    add<gsl_ran_beta_pdf, gsl_cdf_beta_P, gsl_cdf_beta_Q, gsl_cdf_beta_Pinv, 0, 1>(all, "Beta");
    add<gsl_ran_fdist_pdf, gsl_cdf_fdist_P, gsl_cdf_fdist_Q, gsl_cdf_fdist_Pinv, 0, 1>(all, "F");
    add<gsl_ran_gamma_pdf, gsl_cdf_gamma_P, gsl_cdf_gamma_Q, gsl_cdf_gamma_Pinv, 0, 1>(all,
                                                                                       "Gamma");
    add<gsl_ran_chisq_pdf, gsl_cdf_chisq_P, gsl_cdf_chisq_Q, gsl_cdf_chisq_Pinv, 0>(all, "ChiSq");
    add_family<binomial<gsl_ran_binomial_pdf>, binomial<gsl_cdf_binomial_P>,
               binomial<gsl_cdf_binomial_Q>, kNone>(all, "Binomial");
    add_family<neg_binomial<gsl_ran_negative_binomial_pdf>,
               neg_binomial<gsl_cdf_negative_binomial_P>, neg_binomial<gsl_cdf_negative_binomial_Q>,
               kNone>(all, "NegBinomial");
    add_family<poisson<gsl_ran_poisson_pdf>, poisson<gsl_cdf_poisson_P>, poisson<gsl_cdf_poisson_Q>,
               kNone>(all, "Poisson");
    add_family<hypergeometric<gsl_ran_hypergeometric_pdf>, hypergeometric<gsl_cdf_hypergeometric_P>,
               hypergeometric<gsl_cdf_hypergeometric_Q>, kNone>(all, "Hypergeometric");
    add_family<geometric<gsl_ran_geometric_pdf>, geometric<gsl_cdf_geometric_P>,
               geometric<gsl_cdf_geometric_Q>, kNone>(all, "Geometric");
    add<gsl_ran_exponential_pdf, gsl_cdf_exponential_P, gsl_cdf_exponential_Q,
        gsl_cdf_exponential_Pinv, 0>(all, "Exponential");
    add<gsl_ran_weibull_pdf, gsl_cdf_weibull_P, gsl_cdf_weibull_Q, gsl_cdf_weibull_Pinv, 1, 0>(
        all, "Weibull");
    add<gsl_ran_lognormal_pdf, gsl_cdf_lognormal_P, gsl_cdf_lognormal_Q, gsl_cdf_lognormal_Pinv, 0,
        1>(all, "LogNormal");
    add_located<gsl_ran_logistic_pdf, gsl_cdf_logistic_P, gsl_cdf_logistic_Q,
                gsl_cdf_logistic_Pinv>(all, "Logistic");
    add_located<gsl_ran_cauchy_pdf, gsl_cdf_cauchy_P, gsl_cdf_cauchy_Q, gsl_cdf_cauchy_Pinv>(
        all, "Cauchy");
    add_located<gsl_ran_laplace_pdf, gsl_cdf_laplace_P, gsl_cdf_laplace_Q, gsl_cdf_laplace_Pinv>(
        all, "Laplace");
    return all;
}

Implementation gsl() {
    gsl_set_error_handler_off();
    return {"gsl",
            families(),
            {{"MeanAndVariance", mean_and_variance},
             {"SkewnessAndKurtosis", skewness_and_kurtosis},
             {"Covariance", covariance},
             {"OneSampleT", one_sample_t}},
            GSL_VERSION};
}

[[maybe_unused]] const bool added = add_peer(gsl());

}  // namespace
}  // namespace bench
