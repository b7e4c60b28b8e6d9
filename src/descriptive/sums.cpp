#include "conventions/quiet_nan.hpp"
#include "descriptive/kahan.hpp"
#include "vela/v1/moments.hpp"

namespace vela::v1 {

using descriptive::KahanSum;

double GetSum(const double* x, unsigned int n) {
    if (n == 0) {
        return conventions::kNaN;
    }
    KahanSum sum;
    for (unsigned int i = 0; i < n; ++i) {
        sum.add(x[i]);
    }
    return sum.value();
}

void GetCumulativeSums(const double* x, unsigned int n, double* out) {
    KahanSum sum;
    for (unsigned int i = 0; i < n; ++i) {
        sum.add(x[i]);
        out[i] = sum.value();
    }
}

double GetProportions(const double* x, unsigned int n, double* out) {
    const double sum = GetSum(x, n);
    for (unsigned int i = 0; i < n; ++i) {
        out[i] = x[i] / sum;
    }
    return sum;
}

}  // namespace vela::v1
