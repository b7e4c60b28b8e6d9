#include "kernels/regula_falsi_root.hpp"

#include "conventions/status.hpp"
#include "vela/missing_value.hpp"

#include <cmath>

namespace vela::kernels {
namespace {

constexpr int kMaxSteps = 10000;

double fail(int reason, int* status) {
    *status = reason;
    return MissingValue;
}

/// Smallest integer from floor(left) on at which fn is no longer on the far side of zero from the
/// right end: found by doubling steps, then bisection, because a walk one by one could be long.
double smallest_integer(double left, bool isRightPositive, CmRealFunction& fn, int* status) {
    const auto isBefore = [&](double x) {
        const double value = fn.evaluate(x);
        return isRightPositive ? value < 0.0 : value > 0.0;
    };
    double before = std::floor(left);
    if (!isBefore(before)) {
        return before;
    }
    double width = 1.0;
    double after = before + width;
    for (int step = 0; isBefore(after); ++step) {
        if (step == kMaxSteps || after + width == after) {
            return fail(conventions::kNoRoot, status);
        }
        before = after;
        width *= 2.0;
        after = before + width;
    }
    while (after - before > 1.0) {
        const double middle = std::floor(before + (after - before) / 2.0);
        (isBefore(middle) ? before : after) = middle;
    }
    return after;
}

}  // namespace

double regula_falsi_root(double a, double b, CmRealFunction& fn, int* status) {
    *status = conventions::kSuccess;
    double fa = fn.evaluate(a);
    double fb = fn.evaluate(b);
    if (fa == MissingValue || fb == MissingValue) {
        return fail(conventions::kMissingEndPoint, status);
    }
    // Signs are compared, not multiplied: a product of two small values underflows to 0.
    const bool isRightPositive = fb > 0.0;
    if (!(isRightPositive ? fa < 0.0 : fb < 0.0 && fa > 0.0)) {
        if (!fn.value_converged(fa) && !fn.value_converged(fb)) {
            return fail(conventions::kNoRoot, status);
        }
        const double end = fn.value_converged(fa) ? a : b;
        return fn.is_integer() ? std::round(end) : end;
    }
    for (int step = 0; step < kMaxSteps && fa != fb; ++step) {
        const double x = a - fa / (fb - fa) * (b - a);
        const double fx = fn.evaluate(x);
        if (fn.value_converged(fx) || fn.interval_converged(a, b)) {
            return fn.is_integer() ? smallest_integer(a, isRightPositive, fn, status) : x;
        }
        if ((fa > 0.0) == (fx > 0.0)) {
            a = x;
            fa = fx;
            fb /= 2.0;
        } else {
            b = x;
            fb = fx;
            fa /= 2.0;
        }
    }
    return fail(conventions::kNoRoot, status);
}

}  // namespace vela::kernels
