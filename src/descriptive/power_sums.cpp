// Centred power sums and the shape coefficients that rest on them: the mean and the sums of the
// second, third and fourth powers are updated together, value by value (Terriberry 2007, Pebay
// 2008), each of them compensated.

#include "conventions/quiet_nan.hpp"
#include "conventions/status.hpp"
#include "descriptive/kahan.hpp"
#include "descriptive/known_divisor.hpp"
#include "vela/v1/moments.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace vela::v1 {
namespace {

using conventions::kNaN;
using descriptive::KahanPair;
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
    // Nothing goes back from the sums into the mean. So each lags behind what it needs, the sums of
    // the second and the third power by one value and that of the fourth by two: no addition waits
    // for a term of its own value, and two accumulators share each instruction.
    KahanPair meanAndSecond(Pair{x[0], 0.0});
    KahanPair thirdAndFourth;
    // Negative, so that the first terms are not -0 whatever the rounding direction.
    double q = -1.0;
    double secondTerm = 0.0;
    double fourthTerm = 0.0;
    double fewer = 0.0;
    double product = 0.0;
    const auto add_higher = [&] {
        const double m2 = meanAndSecond.value()[1];
        const double m3 = thirdAndFourth.value()[0];
        const Pair lower = Pair{6.0, 4.0} * Pair{m2, m3} * q;
        thirdAndFourth.add(Pair{(fewer * secondTerm - 3.0 * m2) * q, fourthTerm});
        fourthTerm = (product + 1.0) * secondTerm * q * q + lower[0] * q - lower[1];
    };
    descriptive::for_counts<Divisor>(1, n, [&](std::uint32_t k, double before, Divisor count) {
        add_higher();
        const double d = x[k] - meanAndSecond.value()[0];
        q = count.quotient(d);
        meanAndSecond.add(Pair{q, secondTerm});
        secondTerm = before * q * d;
        fewer = before - 1.0;
        // Deliberately a product of 32-bit integers, which wraps for k > 65536.
        product = (k - 1U) * k;
    });
    add_higher();
    const double mean = meanAndSecond.value()[0];
    const double third = thirdAndFourth.value()[0];
    meanAndSecond.add(Pair{0.0, secondTerm});
    thirdAndFourth.add(Pair{0.0, fourthTerm});
    return {mean, meanAndSecond.value()[1], third, thirdAndFourth.value()[1]};
}

/// For n > 0; with one value the sums are 0.
PowerSums power_sums(const double* x, unsigned int n) {
    const auto loop = []<class Divisor>(const double* values, unsigned int size) {
        return accumulate<Divisor>(values, size);
    };
    return descriptive::with_fastest_divisor(loop, x, n);
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
