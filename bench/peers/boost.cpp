// Boost.Math, configured as in production code: errors by errno and NaN instead of exceptions, and
// double arithmetic throughout.

#include "functions.hpp"

#include <boost/math/distributions/non_central_t.hpp>
#include <boost/math/distributions/normal.hpp>
#include <boost/math/distributions/students_t.hpp>
#include <boost/math/statistics/bivariate_statistics.hpp>
#include <boost/math/statistics/t_test.hpp>
#include <boost/math/statistics/univariate_statistics.hpp>

#include <cmath>
#include <span>

namespace bench {
namespace {

using namespace boost::math::policies;
using Policy =
    policy<promote_double<false>, domain_error<errno_on_error>, pole_error<errno_on_error>,
           overflow_error<errno_on_error>, evaluation_error<errno_on_error>,
           rounding_error<errno_on_error>, indeterminate_result_error<errno_on_error>>;
using Normal = boost::math::normal_distribution<double, Policy>;
using StudentsT = boost::math::students_t_distribution<double, Policy>;
using NoncentralT = boost::math::non_central_t_distribution<double, Policy>;

template <class Distribution>
auto cdf_of(const Distribution& distribution) {
    return [=](double x) { return cdf(distribution, x); };
}

template <class Distribution>
auto quantile_of(const Distribution& distribution) {
    return [=](double p) { return quantile(distribution, p); };
}

Normal normal(const Parameters& p) { return {p[0], p[1]}; }
StudentsT students_t(const Parameters& p) { return StudentsT(p[0]); }
NoncentralT noncentral_t(const Parameters& p) { return {p[0], p[1]}; }

double mean_and_variance(const double* x, std::size_t n) {
    const auto [mean, variance] = boost::math::statistics::mean_and_sample_variance(x, x + n);
    return mean + variance;
}

/// The adjusted coefficients from one pass over the first four moments.
double skewness_and_kurtosis(const double* x, std::size_t n) {
    const double count = static_cast<double>(n);
    const auto [mean, m2, m3, m4] = boost::math::statistics::first_four_moments(x, x + n);
    const double g1 = m3 / (m2 * std::sqrt(m2));
    const double g2 = m4 / (m2 * m2) - 3.0;
    return g1 * std::sqrt(count * (count - 1.0)) / (count - 2.0) +
           ((count + 1.0) * g2 + 6.0) * (count - 1.0) / ((count - 2.0) * (count - 3.0));
}

/// Its own covariance, of whole ranges, has the divisor n.
double covariance(const double* x, std::size_t n) {
    const std::size_t half = n / 2;
    const std::span<const double> first(x, half);
    const std::span<const double> second(x + half, half);
    const double count = static_cast<double>(half);
    return boost::math::statistics::covariance(first, second) * (count / (count - 1.0));
}

/// Pooled, against equal means, of two samples of equal size.
double two_sample_t(const double* x, std::size_t n) {
    const double* y = x + n / 2;
    const auto [meanX, varianceX] = boost::math::statistics::mean_and_sample_variance(x, y);
    const auto [meanY, varianceY] = boost::math::statistics::mean_and_sample_variance(y, y + n / 2);
    const double count = static_cast<double>(n / 2);
    const double statistic = (meanX - meanY) / std::sqrt((varianceX + varianceY) / count);
    const StudentsT reference(2.0 * count - 2.0);
    return statistic + 2.0 * cdf(complement(reference, std::abs(statistic)));
}

double one_sample_t(const double* x, std::size_t n) {
    const double count = static_cast<double>(n);
    const auto [mean, variance] = boost::math::statistics::mean_and_sample_variance(x, x + n);
    const auto [statistic, pValue] =
        boost::math::statistics::one_sample_t_test(mean, variance, count, kHypothesizedMean);
    const double half =
        quantile(StudentsT(count - 1.0), 0.5 + 0.5 * kConfidence) * std::sqrt(variance / count);
    return (mean - half) + (mean + half) + pValue;
}

/// make turns parameters into a distribution.
template <auto make>
PointFunction cdf_point(std::string_view name) {
    return point<[](const Parameters& p) { return cdf_of(make(p)); }>(name);
}

template <auto make>
PointFunction quantile_point(std::string_view name) {
    return point<[](const Parameters& p) { return quantile_of(make(p)); }>(name);
}

[[maybe_unused]] const bool added = add_peer({"boost",
                                              {
                                                  cdf_point<normal>("NormalCdf"),
                                                  quantile_point<normal>("NormalInvCdf"),
                                                  cdf_point<students_t>("TCdf"),
                                                  quantile_point<students_t>("TInvCdf"),
                                                  cdf_point<noncentral_t>("NoncentralTCdf"),
                                                  quantile_point<noncentral_t>("NoncentralTInvCdf"),
                                              },
                                              {{"MeanAndVariance", mean_and_variance},
                                               {"SkewnessAndKurtosis", skewness_and_kurtosis},
                                               {"Covariance", covariance},
                                               {"OneSampleT", one_sample_t},
                                               {"TwoSampleT", two_sample_t}}});

}  // namespace
}  // namespace bench
