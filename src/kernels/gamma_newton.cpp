#include "kernels/gamma_newton.hpp"

#include "conventions/error_channel.hpp"

#include <algorithm>
#include <cmath>

namespace vela::kernels {

using conventions::clear_negative_level;
using conventions::kernel_failed;
using conventions::kNoConvergence;

namespace {

constexpr int kMaxEvaluations = 35;
constexpr double kTolerance = 1e-9;

void fail() {
    conventions::error_channel.kernel_error_level = kNoConvergence;
    conventions::name_kernel("gamma_newton");
}

}  // namespace

void gamma_newton(double target, const GammaShape& shape, double* x, GammaTail tail) {
    double step = 0.0;
    double scale = -1.0;  // no step counts as converged before the first evaluation
    for (int i = 0; i < kMaxEvaluations && !(std::fabs(step) < scale * kTolerance); ++i) {
        *x += step;
        double P = 0.0;
        double Q = 0.0;
        double f = 0.0;
        shape.pq(*x, &P, &Q, &f);
        if (kernel_failed() || f == 0.0) {
            fail();
            return;
        }
        const bool isLower = tail == GammaTail::kLower;
        step = isLower ? (target - P) / f : (Q - target) / f;
        scale = std::max(*x, (isLower ? P : Q) / f);
    }
    if (std::fabs(step) < scale * kTolerance) {
        clear_negative_level("gamma_newton");
    } else {
        fail();
    }
}

void gamma_newton(double target, double a, double* x, char tail) {
    gamma_newton(target, gamma_shape(a), x, static_cast<GammaTail>(tail));
}

}  // namespace vela::kernels
