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
            {{"MeanAndVariance", mean_and_variance}, {"OneSampleT", one_sample_t}}};
}

[[maybe_unused]] const bool added = add_peer(gsl());

}  // namespace
}  // namespace bench
