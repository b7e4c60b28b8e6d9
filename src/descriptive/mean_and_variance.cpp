// Mean and sum of squared deviations in one pass (Welford 1962), both compensated (Kahan 1965).

#include "descriptive/mean_and_variance.hpp"

#include "conventions/quiet_nan.hpp"
#include "descriptive/kahan.hpp"
#include "descriptive/known_divisor.hpp"
#include "descriptive/running_mean.hpp"

#include <algorithm>
#include <utility>

namespace vela::descriptive {
namespace {

template <class Mean>
class Accumulator {
public:
    explicit Accumulator(const Sample& sample)
        : m_mean(sample.n == 0 ? conventions::kNaN : sample.x[0]) {}

    /// `before` values are in already, and count divides by one more.
    template <class Divisor>
    void add(double value, double before, const Divisor& count) {
        const double deviation = value - m_mean.value();
        const double move = m_mean.add(deviation, count);
        m_squares.add(before * move * deviation);
    }

    MeanAndVariance result(unsigned int n) const {
        if (n < 2) {
            return {m_mean.value(), n == 0 ? conventions::kNaN : 0.0};
        }
        return {m_mean.value(), m_squares.value() / (static_cast<double>(n) - 1.0)};
    }

private:
    Mean m_mean;
    KahanSum m_squares;
};

/// Takes in the values of a sample from `first` on. Accumulators travel by value, which keeps them
/// in registers.
template <class Divisor, class Mean>
Accumulator<Mean> add_rest(Accumulator<Mean> accumulator, const Sample& sample,
                           unsigned int first) {
    for_counts<Divisor>(first, sample.n, [&](unsigned int i, double before, const Divisor& count) {
        accumulator.add(sample.x[i], before, count);
    });
    return accumulator;
}

template <class Divisor, std::size_t... k>
std::array<MeanAndVariance, sizeof...(k)> run(const std::array<Sample, sizeof...(k)>& samples,
                                              std::index_sequence<k...> /*unused*/) {
    std::array accumulators{Accumulator<RunningMean>(samples[k])...};
    const unsigned int common = std::max(1U, std::min({samples[k].n...}));
    for_counts<Divisor>(1, common, [&](unsigned int i, double before, const Divisor& count) {
        (accumulators[k].add(samples[k].x[i], before, count), ...);
    });
    return {add_rest<Divisor>(accumulators[k], samples[k], common).result(samples[k].n)...};
}

}  // namespace

MeanAndVariance mean_and_variance(Sample sample) {
    const auto loop = []<class Divisor>(Sample values) {
        const Accumulator<GuessedRunningMean<double>> first(values);
        return add_rest<Divisor>(first, values, 1).result(values.n);
    };
    return with_fastest_divisor(loop, sample);
}

template <std::size_t count>
std::array<MeanAndVariance, count> means_and_variances(const std::array<Sample, count>& samples) {
    return with_fastest_divisor(
        [&]<class Divisor>() { return run<Divisor>(samples, std::make_index_sequence<count>()); });
}

template std::array<MeanAndVariance, 2> means_and_variances(const std::array<Sample, 2>&);
template std::array<MeanAndVariance, 3> means_and_variances(const std::array<Sample, 3>&);

}  // namespace vela::descriptive
