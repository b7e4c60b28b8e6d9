#include "vela/v2/geometric_mean.hpp"

#include "conventions/quiet_nan.hpp"

#include <cmath>
#include <limits>

namespace vela::v2 {
namespace {

constexpr double kBase = 0x1p256;
constexpr double kReciprocalBase = 0x1p-256;

/// value * kBase^exponent > 0. With both factors in [1 / kBase, kBase] no product overflows or
/// underflows, and scaling is exact.
struct ScaledProduct {
    double value = 1.0;
    double exponent = 0.0;

    void multiply(double factor) {
        value *= bring_into_range(factor);
        value = bring_into_range(value);
    }

private:
    double bring_into_range(double positive) {
        while (positive > kBase) {
            positive *= kReciprocalBase;
            exponent += 1.0;
        }
        while (positive < kReciprocalBase) {
            positive *= kBase;
            exponent -= 1.0;
        }
        return positive;
    }
};

}  // namespace

double GetGeometricMean(const double* x, unsigned int n) {
    if (n < 2) {
        return n == 0 ? conventions::kNaN : x[0];
    }
    ScaledProduct product;
    for (unsigned int i = 0; i < n; ++i) {
        if (!(x[i] > 0.0)) {
            return x[i] == 0.0 ? 0.0 : conventions::kNaN;
        }
        if (x[i] == std::numeric_limits<double>::infinity()) {
            return x[i];
        }
        product.multiply(x[i]);
    }
    const double count = n;
    return std::pow(kBase, product.exponent / count) * std::pow(product.value, 1.0 / count);
}

}  // namespace vela::v2
