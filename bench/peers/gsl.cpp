// GSL. It has no noncentral t; its handler, which ends the process on an error, is turned off.

#include "functions.hpp"

#include <gsl/gsl_cdf.h>
#include <gsl/gsl_errno.h>
#include <gsl/gsl_statistics_double.h>

#include <cmath>

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

Implementation gsl() {
    gsl_set_error_handler_off();
    return {"gsl",
            {
                point<[](double x, const P& p) { return gsl_cdf_gaussian_P(x - p[0], p[1]); }>(
                    "NormalCdf"),
                point<[](double x, const P& p) { return p[0] + gsl_cdf_gaussian_Pinv(x, p[1]); }>(
                    "NormalInvCdf"),
                point<[](double x, const P& p) { return gsl_cdf_tdist_P(x, p[0]); }>("TCdf"),
                point<[](double x, const P& p) { return gsl_cdf_tdist_Pinv(x, p[0]); }>("TInvCdf"),
            },
            {{"MeanAndVariance", mean_and_variance},
             {"SkewnessAndKurtosis", skewness_and_kurtosis},
             {"Covariance", covariance},
             {"OneSampleT", one_sample_t}}};
}

[[maybe_unused]] const bool added = add_peer(gsl());

}  // namespace
}  // namespace bench
