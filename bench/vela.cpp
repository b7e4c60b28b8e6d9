// Our own entries: the public scalar and array forms.

#include "functions.hpp"
#include "vela/normal.hpp"
#include "vela/t.hpp"
#include "vela/v0/one_sample_t.hpp"
#include "vela/v0/two_sample_t.hpp"
#include "vela/v1/correlation.hpp"
#include "vela/v1/moments.hpp"

#include <cstdint>

namespace bench {
namespace {

using P = Parameters;
using Size = std::size_t;

double normal_cdf(double x, const P& p) { return vela::NormalCdf(x, p[0], p[1], false); }
void normal_cdf(double* out, const double* x, Size n, const P& p) {
    vela::NormalCdf(out, x, n, p[0], p[1], false);
}
double normal_inv_cdf(double probability, const P& p) {
    return vela::NormalInvCdf(probability, p[0], p[1]);
}
void normal_inv_cdf(double* out, const double* probability, Size n, const P& p) {
    vela::NormalInvCdf(out, probability, n, p[0], p[1]);
}

double t_cdf(double t, const P& p) { return vela::TCdf(t, p[0], p[1], false); }
void t_cdf(double* out, const double* t, Size n, const P& p) {
    vela::TCdf(out, t, n, p[0], p[1], false);
}
double t_inv_cdf(double probability, const P& p) { return vela::TInvCdf(probability, p[0], p[1]); }
void t_inv_cdf(double* out, const double* probability, Size n, const P& p) {
    vela::TInvCdf(out, probability, n, p[0], p[1]);
}

double mean_and_variance(const double* x, Size n) {
    double mean = 0.0;
    double variance = 0.0;
    vela::v1::GetSampleMeanAndVariance(x, static_cast<unsigned int>(n), &mean, &variance);
    return mean + variance;
}

double sum(const double* x, Size n) { return vela::v1::GetSum(x, static_cast<unsigned int>(n)); }

double skewness_and_kurtosis(const double* x, Size n) {
    double skewness = 0.0;
    double kurtosis = 0.0;
    vela::v1::GetKroSkewnessAndKurtosis(x, static_cast<unsigned int>(n), &skewness, &kurtosis);
    return skewness + kurtosis;
}

double covariance(const double* x, Size n) {
    double varianceX = 0.0;
    double varianceY = 0.0;
    const double* y = x + n / 2;
    return vela::v1::GetCovariance(x, y, static_cast<unsigned int>(n / 2), &varianceX, &varianceY);
}

double two_sample_t(const double* x, Size n) {
    vela::v0::TwoSampleT record;
    record.count1 = record.count2 = static_cast<std::uint32_t>(n / 2);
    vela::v0::RunTwoSampleT(&record, x, x + n / 2, true, kConfidence, vela::IntervalType::TwoSided,
                            vela::AlternativeHypothesis::NotEqual, 0.0);
    return record.statistic + record.pValue;
}

double one_sample_t(const double* x, Size n) {
    vela::v0::OneSampleT record;
    record.count = static_cast<std::uint32_t>(n);
    vela::v0::RunOneSampleT(&record, x, kConfidence, vela::IntervalType::TwoSided,
                            vela::AlternativeHypothesis::NotEqual, kHypothesizedMean);
    return record.lower + record.upper + record.pValue;
}

}  // namespace

const Implementation& ours() {
    static const Implementation implementation = {
        "vela",
        {
            {"NormalCdf", normal_cdf, normal_cdf},
            {"NormalInvCdf", normal_inv_cdf, normal_inv_cdf},
            {"TCdf", t_cdf, t_cdf},
            {"TInvCdf", t_inv_cdf, t_inv_cdf},
            {"NoncentralTCdf", t_cdf, t_cdf},
            {"NoncentralTInvCdf", t_inv_cdf, t_inv_cdf},
        },
        {{"Sum", sum},
         {"MeanAndVariance", mean_and_variance},
         {"SkewnessAndKurtosis", skewness_and_kurtosis},
         {"Covariance", covariance},
         {"OneSampleT", one_sample_t},
         {"TwoSampleT", two_sample_t}}};
    return implementation;
}

}  // namespace bench
