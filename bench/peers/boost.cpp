// Boost.Math, configured as in production code: errors by errno and NaN instead of exceptions, and
// double arithmetic throughout; the quantile of a count is the smallest that reaches the
// probability.

#include "functions.hpp"

#include <boost/math/distributions.hpp>
#include <boost/math/statistics/bivariate_statistics.hpp>
#include <boost/math/statistics/t_test.hpp>
#include <boost/math/statistics/univariate_statistics.hpp>
#include <boost/version.hpp>

#include <cmath>
#include <span>
#include <string>
#include <vector>

namespace bench {
namespace {

using namespace boost::math::policies;
namespace bm = boost::math;
using P = Parameters;
using Policy = policy<promote_double<false>, discrete_quantile<integer_round_up>,
                      domain_error<errno_on_error>, pole_error<errno_on_error>,
                      overflow_error<errno_on_error>, evaluation_error<errno_on_error>,
                      rounding_error<errno_on_error>, indeterminate_result_error<errno_on_error>>;
using StudentsT = bm::students_t_distribution<double, Policy>;

/// A distribution from its first parameters, in our order.
template <template <class, class> class Distribution, std::size_t... i>
Distribution<double, Policy> from(const P& p) {
    return Distribution<double, Policy>(p[i]...);
}

bm::negative_binomial_distribution<double, Policy> neg_binomial(const P& p) { return {p[1], p[0]}; }

bm::exponential_distribution<double, Policy> exponential(const P& p) { return {1.0 / p[0]}; }

bm::hypergeometric_distribution<double, Policy> hypergeometric(const P& p) {
    const auto count = [&](std::size_t i) { return static_cast<unsigned>(p[i]); };
    return {count(1), count(2), count(0)};
}

/// make turns parameters into a distribution.
template <auto make>
void add(std::vector<PointFunction>& all, const std::string& family) {
    add_family<[](const P& p) { return [d = make(p)](double x) { return pdf(d, x); }; },
               [](const P& p) { return [d = make(p)](double x) { return cdf(d, x); }; },
               [](const P& p) { return [d = make(p)](double x) { return cdf(complement(d, x)); }; },
               [](const P& p) { return [d = make(p)](double x) { return quantile(d, x); }; }>(
        all, family);
}

std::vector<PointFunction> families() {
    std::vector<PointFunction> all;
    add<from<bm::normal_distribution, 0, 1>>(all, "Normal");
    add<from<bm::students_t_distribution, 0>>(all, "T");
    add<from<bm::non_central_t_distribution, 0, 1>>(all, "NoncentralT");
    add<from<bm::beta_distribution, 0, 1>>(all, "Beta");
    add<from<bm::fisher_f_distribution, 0, 1>>(all, "F");
    add<from<bm::non_central_f_distribution, 0, 1, 2>>(all, "NoncentralF");
    add<from<bm::gamma_distribution, 0, 1>>(all, "Gamma");
    add<from<bm::chi_squared_distribution, 0>>(all, "ChiSq");
    add<from<bm::non_central_chi_squared_distribution, 0, 1>>(all, "NoncentralChiSq");
    add<from<bm::binomial_distribution, 0, 1>>(all, "Binomial");
    add<neg_binomial>(all, "NegBinomial");
    add<from<bm::poisson_distribution, 0>>(all, "Poisson");
    add<hypergeometric>(all, "Hypergeometric");
    add<from<bm::geometric_distribution, 0>>(all, "Geometric");
    add<from<bm::weibull_distribution, 0, 1>>(all, "Weibull");
    add<from<bm::lognormal_distribution, 0, 1>>(all, "LogNormal");
    add<from<bm::logistic_distribution, 0, 1>>(all, "Logistic");
    add<from<bm::cauchy_distribution, 0, 1>>(all, "Cauchy");
    add<from<bm::laplace_distribution, 0, 1>>(all, "Laplace");
    add<from<bm::extreme_value_distribution, 0, 1>>(all, "LargestExtremeValue");
    add<exponential>(all, "Exponential");
    return all;
}

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

std::string version() {
    return std::to_string(BOOST_VERSION / 100000) + "." +
           std::to_string(BOOST_VERSION / 100 % 1000);
}

[[maybe_unused]] const bool added = add_peer({"boost",
                                              families(),
                                              {{"MeanAndVariance", mean_and_variance},
                                               {"SkewnessAndKurtosis", skewness_and_kurtosis},
                                               {"Covariance", covariance},
                                               {"OneSampleT", one_sample_t},
                                               {"TwoSampleT", two_sample_t}},
                                              version()});

}  // namespace
}  // namespace bench
