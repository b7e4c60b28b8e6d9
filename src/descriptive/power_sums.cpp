// Centred power sums and the shape coefficients that rest on them: the mean and the sums of the
// second, third and fourth powers are updated together, value by value (Terriberry 2007, Pebay
// 2008), each of them compensated.

#include "conventions/quiet_nan.hpp"
#include "conventions/status.hpp"
#include "descriptive/kahan.hpp"
#include "descriptive/known_divisor.hpp"
#include "descriptive/running_mean.hpp"
#include "vela/v1/moments.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace vela::v1 {
namespace {

using conventions::kNaN;
using descriptive::KahanPair;
using descriptive::KahanSum;
using descriptive::Pair;

constexpr unsigned int kSlots = 4;

/// In the order in which the caller gets them.
struct PowerSums {
    double mean;
    double second;
    double third;
    double fourth;
};

template <class Divisor>
PowerSums accumulate(const double* x, unsigned int n) {
    descriptive::RunningMean mean(x[0]);
    KahanSum second;
    KahanPair thirdAndFourth;
    double fourthTerm = 0.0;
    double fewer = 0.0;
    double before = 1.0;
    // Unrolled, because copying the sums from one value to the next costs as much as adding to
    // them.
#pragma GCC unroll 4
    for (std::uint32_t k = 1; k < n; ++k) {
        const double count = before + 1.0;
        const double d = x[k] - mean.value();
        const double q = mean.add(d, Divisor(count));
        const double term = before * q * d;
        // Deliberately a product of 32-bit integers, which wraps for k > 65536.
        const double product = (k - 1U) * k;
        const double m2 = second.value();
        const double m3 = thirdAndFourth.value()[0];
        // The fourth power sum lags by one value, so that nothing waits for its long term.
        thirdAndFourth.add(Pair{(fewer * term - 3.0 * m2) * q, fourthTerm});
        fourthTerm = (product + 1.0) * term * q * q + 6.0 * m2 * q * q - 4.0 * m3 * q;
        second.add(term);
        fewer = before;
        before = count;
    }
    const double third = thirdAndFourth.value()[0];
    thirdAndFourth.add(Pair{0.0, fourthTerm});
    return {mean.value(), second.value(), third, thirdAndFourth.value()[1]};
}

/// For n > 0; with one value the sums are 0.
PowerSums power_sums(const double* x, unsigned int n) {
    return descriptive::with_fastest_divisor(
        [=]<class Divisor>() { return accumulate<Divisor>(x, n); });
}

}  // namespace

int GetCenteredOrderKPowerSums(const double* x, unsigned int n, double* out, unsigned int k) {
    const PowerSums sums = n == 0 ? PowerSums{kNaN, kNaN, kNaN, kNaN} : power_sums(x, n);
    const double slots[kSlots] = {sums.mean, sums.second, sums.third, sums.fourth};
    std::copy_n(slots, std::min(k, kSlots), out);
    if (k <= kSlots) {
        return conventions::kSuccess;
    }
    std::fill(out + kSlots, out + k, kNaN);
    return conventions::kTooManyPowerSums;
}

void GetKroSkewnessAndKurtosis(const double* x, unsigned int n, double* skewness,
                               double* kurtosis) {
    if (n < 3) {
        *skewness = kNaN;
        *kurtosis = kNaN;
        return;
    }
    const PowerSums sums = power_sums(x, n);
    const double m2 = sums.second;
    const double count = n;
    *skewness = std::sqrt((count - 1.0) / m2) * (count / (count - 2.0)) * (sums.third / m2);
    *kurtosis = n == 3 ? kNaN
                       : (sums.fourth / (m2 * m2) * (count + 1.0) * count - 3.0 * (count - 1.0)) *
                             ((count - 1.0) / ((count - 3.0) * (count - 2.0)));
}

}  // namespace vela::v1
