#include "vela/v1/correlation.hpp"

#include "conventions/call_frame.hpp"
#include "conventions/status.hpp"
#include "descriptive/kahan.hpp"
#include "descriptive/known_divisor.hpp"
#include "descriptive/running_mean.hpp"
#include "descriptive/word_buffer.hpp"
#include "distributions/t.hpp"
#include "vela/v0/correlation.hpp"
#include "vela/v1/order_statistics.hpp"

#include <cmath>

namespace vela {

using conventions::kNaN;
using descriptive::KahanPair;
using descriptive::KahanSum;
using descriptive::Pair;

namespace {

/// Sums of products of the deviations from the two means.
struct Comoments {
    double xx;
    double yy;
    double xy;
};

/// One pass for n > 0; x is the first and y the second element of each pair.
template <class Divisor>
Comoments accumulate(const double* x, const double* y, unsigned int n) {
    descriptive::GuessedRunningMean<Pair> means(Pair{x[0], y[0]});
    KahanPair squares;
    KahanSum products;
    descriptive::for_counts<Divisor>(1, n, [&](unsigned int i, double before, Divisor count) {
        const Pair deviations = Pair{x[i], y[i]} - means.value();
        const Pair moves = means.add(deviations, count);
        squares.add(before * deviations * moves);
        // Multiplied before it is taken apart: one instruction less in the loop.
        products.add((before * moves)[1] * deviations[0]);
    });
    return {squares.value()[0], squares.value()[1], products.value()};
}

Comoments comoments(const double* x, const double* y, unsigned int n) {
    const auto loop = []<class Divisor>(const double* first, const double* second,
                                        unsigned int size) {
        return accumulate<Divisor>(first, second, size);
    };
    return descriptive::with_fastest_divisor(loop, x, y, n);
}

}  // namespace

double v1::GetCovariance(const double* x, const double* y, unsigned int n, double* varianceX,
                         double* varianceY) {
    if (n < 2) {
        return kNaN;
    }
    const Comoments sums = comoments(x, y, n);
    const double divisor = static_cast<double>(n) - 1.0;
    *varianceX = sums.xx / divisor;
    *varianceY = sums.yy / divisor;
    return sums.xy / divisor;
}

double v1::GetPearsonCorrelation(const double* x, const double* y, unsigned int n) {
    if (n < 2) {
        return kNaN;
    }
    const Comoments sums = comoments(x, y, n);
    const double magnitude = std::sqrt(sums.xy * sums.xy / (sums.yy * sums.xx));
    const double clamped = magnitude > 1.0 ? 1.0 : magnitude;
    return sums.xy < 0.0 ? -clamped : clamped;
}

double v1::GetSpearmanCorrelation(const double* x, const double* y, unsigned int n, int* status) {
    const descriptive::WordBuffer ranks(2 * std::size_t{n});
    if (!ranks) {
        *status = conventions::kOutOfMemory;
        return kNaN;
    }
    // The status is deliberately left alone when the ranking itself fails.
    double* const ranksX = ranks.doubles();
    double* const ranksY = ranksX + n;
    if (GetRank(x, n, ranksX) != conventions::kSuccess ||
        GetRank(y, n, ranksY) != conventions::kSuccess) {
        return kNaN;
    }
    *status = conventions::kSuccess;
    return GetPearsonCorrelation(ranksX, ranksY, n);
}

double v0::GetKroCorrelationPValue(double r, unsigned int n) {
    const conventions::QuietArithmetic quiet;
    const double magnitude = std::fabs(r);
    if (n <= 2 || !(magnitude <= 1.0)) {
        return kNaN;
    }
    if (magnitude == 1.0) {
        return 0.0;
    }
    const double df = static_cast<double>(n) - 2.0;
    const double t = r * std::sqrt(df / (1.0 - r * r));
    return conventions::quiet_value(distributions::t_p_value, t, df, EAlternative::TwoSided);
}

}  // namespace vela
