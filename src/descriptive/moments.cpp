#include "vela/v1/moments.hpp"

#include "conventions/quiet_nan.hpp"
#include "descriptive/kahan.hpp"
#include "descriptive/known_divisor.hpp"
#include "descriptive/mean_and_variance.hpp"
#include "descriptive/running_mean.hpp"

namespace vela::v1 {

using conventions::kNaN;
using descriptive::KahanSum;

SecondSampleMoments::SecondSampleMoments()
    : variance(kNaN), sumOfSquares(kNaN), mean(kNaN), sum(kNaN), count(0) {}
SecondSampleMoments::SecondSampleMoments(const SecondSampleMoments& other) = default;
SecondSampleMoments::SecondSampleMoments(SecondSampleMoments&& other) noexcept = default;
SecondSampleMoments& SecondSampleMoments::operator=(const SecondSampleMoments& other) = default;
SecondSampleMoments& SecondSampleMoments::operator=(SecondSampleMoments&& other) noexcept = default;

double GetSampleMean(const double* x, unsigned int n) {
    if (n == 0) {
        return kNaN;
    }
    const auto loop = []<class Divisor>(const double* values, unsigned int size) {
        descriptive::GuessedRunningMean<double> mean(values[0]);
        descriptive::for_counts<Divisor>(
            1, size, [&](unsigned int i, double /*before*/, const Divisor& count) {
                mean.add(values[i] - mean.value(), count);
            });
        return mean.value();
    };
    return descriptive::with_fastest_divisor(loop, x, n);
}

void GetSampleMeanAndVariance(const double* x, unsigned int n, double* mean, double* variance) {
    const auto result = descriptive::mean_and_variance({x, n});
    *mean = result.mean;
    *variance = result.variance;
}

double GetSampleVariance(const double* x, unsigned int n) {
    return descriptive::mean_and_variance({x, n}).variance;
}

double GetSampleVariance(const double* x, unsigned int n, double center) {
    if (n < 2) {
        return n == 0 ? kNaN : 0.0;
    }
    KahanSum squares;
    KahanSum deviations;
    for (unsigned int i = 0; i < n; ++i) {
        const double deviation = x[i] - center;
        squares.add(deviation * deviation);
        deviations.add(deviation);
    }
    const double count = n;
    return (squares.value() - deviations.value() * deviations.value() / count) / (count - 1.0);
}

void GetSecondSampleMoments(SecondSampleMoments* record, const double* x) {
    const auto result = descriptive::mean_and_variance({x, record->count});
    const double count = record->count;
    record->mean = result.mean;
    record->sum = count * result.mean;
    record->variance = result.variance;
    record->sumOfSquares = (count - 1.0) * result.variance + count * result.mean * result.mean;
}

}  // namespace vela::v1
