#include "fuzz/exercise.hpp"
#include "vela/vela.hpp"

#include <vector>

namespace vela::test {
namespace {

void exercise_moments(const Sample& x, const Sample& y, Bytes& bytes, Results& results) {
    const std::uint32_t n = x.count;
    std::vector<double> out(n);
    results.add(v1::GetSum(x.data(), n));
    v1::GetCumulativeSums(x.data(), n, out.data());
    results.add(out.data(), n);
    results.add(v1::GetProportions(x.data(), n, out.data()));
    results.add(out.data(), n);
    double mean;
    double variance;
    v1::GetSampleMeanAndVariance(x.data(), n, &mean, &variance);
    results.add_each(mean, variance, v1::GetSampleMean(x.data(), n),
                     v1::GetSampleVariance(x.data(), n));
    results.add(v1::GetSampleVariance(x.data(), n, bytes.number()));
    double sums[6];
    const unsigned k = bytes.below(7);
    results.add(v1::GetCenteredOrderKPowerSums(x.data(), n, sums, k));
    results.add(sums, k);
    double skewness;
    double kurtosis;
    v1::GetKroSkewnessAndKurtosis(x.data(), n, &skewness, &kurtosis);
    results.add_each(skewness, kurtosis, v2::GetGeometricMean(x.data(), n));
    results.add(v1::GetCovariance(x.data(), y.data(), n, &mean, &variance));
    results.add_each(mean, variance);
    results.add(v1::GetPearsonCorrelation(x.data(), y.data(), n));
    int status;
    results.add(v1::GetSpearmanCorrelation(x.data(), y.data(), n, &status));
    require(status == 0);
    results.add(v0::GetKroCorrelationPValue(bytes.number(), n));
    results.add(v2::Psi(bytes.number()));
}

void exercise_order(const Sample& x, Bytes& bytes, Results& results) {
    const std::uint32_t n = x.count;
    const double probabilities[] = {bytes.fraction(), bytes.number()};
    double quantiles[2] = {0.0, 0.0};
    results.add(v1::GetSampleQuantiles(x.data(), n, static_cast<int>(bytes.below(11)), quantiles,
                                       probabilities, 2));
    results.add(quantiles, 2);
    std::vector<unsigned> order(n);
    v1::GetOrder(x.data(), n, order.data());
    for (std::uint32_t i = 0; i < n; ++i) {
        require(order[i] < n);
        require(i == 0 || !(x.values[order[i]] < x.values[order[i - 1]]));
        results.add(order[i]);
    }
    std::vector<double> out(n);
    require(v1::GetRank(x.data(), n, out.data()) == 0);
    results.add(out.data(), n);
    unsigned modes = 0;
    unsigned frequency = 0;
    const unsigned most = bytes.below(n + 1);
    require(v1::GetMode(x.data(), n, out.data(), most, &modes, &frequency) == 0);
    require(modes <= most);
    results.add(out.data(), most);
    results.add(frequency);
    int status = 0;
    results.add(v1::GetTrimmedMean(x.data(), n, bytes.fraction(), &status));
    results.add(v1::GetKroTrimmedMean(x.data(), n, &status));
    v1::FiveNumberSummary five;
    results.add(v1::GetKroFiveNumberSummary(&five, x.data(), n));
    results.add(&five.minimum, 5);
    v1::SecondSampleMoments moments;
    moments.count = n;
    double fiveModes[5];
    results.add(
        v1::GetKro2013ExtendedSummary(&moments, &five, fiveModes, &modes, &frequency, x.data()));
    results.add(&moments.variance, 4);
    v1::KroBoxplotHelper box;
    results.add(v1::RunKroBoxplotHelper(&box, bytes.fraction(), x.data(), n));
    results.add(&box.minimum, 11);
}

}  // namespace

void exercise_arrays(Bytes& bytes, Results& results) {
    const Sample x = make_sample(bytes, 300);
    const Sample y = make_sample_of(bytes, x.count);
    exercise_moments(x, y, bytes, results);
    exercise_order(x, bytes, results);
}

}  // namespace vela::test
