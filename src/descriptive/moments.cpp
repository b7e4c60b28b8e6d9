#include "vela/v1/moments.hpp"

#include "conventions/quiet_nan.hpp"
#include "descriptive/kahan.hpp"

namespace vela::v1 {

using conventions::kNaN;
using descriptive::KahanSum;

void GetSampleMeanAndVariance(const double* x, unsigned int n, double* mean, double* variance) {
    if (n == 0) {
        *mean = kNaN;
        *variance = kNaN;
        return;
    }
    KahanSum runningMean(x[0]);
    KahanSum squares;
    for (unsigned int i = 1; i < n; ++i) {
        const double before = i;
        const double d = x[i] - runningMean.value();
        const double q = d / (before + 1.0);
        runningMean.add(q);
        squares.add(before * q * d);
    }
    *mean = runningMean.value();
    *variance = n == 1 ? 0.0 : squares.value() / (static_cast<double>(n) - 1.0);
}

}  // namespace vela::v1
