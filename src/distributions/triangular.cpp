#include "vela/triangular.hpp"

#include "conventions/call_frame.hpp"

#include <cmath>

namespace vela {
namespace distributions {
namespace {

bool are_ordered(double a, double b, double c) {
    return std::islessequal(a, b) && std::islessequal(b, c) && a < c && std::isfinite(a) &&
           std::isfinite(c);
}

double triangular_pdf(double x, double a, double b, double c) {
    if (x != x || !are_ordered(a, b, c)) {
        return MissingValue;
    }
    if (x < a || x > c) {
        return 0.0;
    }
    return conventions::value_unless_overflow(0.0, [=] {
        const double peak = 2.0 / (c - a);
        if (x == b) {
            return peak;
        }
        return x < b ? (x - a) / (b - a) * peak : (c - x) / (c - b) * peak;
    });
}

double lower_tail(double x, double a, double b, double c) {
    if (x >= c) {
        return 1.0;
    }
    if (x <= a) {
        return 0.0;
    }
    if (x <= b) {
        return (x - a) / (b - a) * ((x - a) / (c - a));
    }
    return ((c - x) / (c - b) + 1.0) * ((x - b) / (c - a)) + (b - a) / (c - a);
}

double triangular_cdf(double x, double a, double b, double c, bool upper) {
    if (x != x || !are_ordered(a, b, c)) {
        return MissingValue;
    }
    return upper ? lower_tail(-x, -c, -b, -a) : lower_tail(x, a, b, c);
}

double triangular_inv_cdf(double p, double a, double b, double c) {
    if (!std::isgreaterequal(p, 0.0) || !std::islessequal(p, 1.0) || !are_ordered(a, b, c)) {
        return MissingValue;
    }
    // Roots of the factors, because the product of two lengths might overflow.
    const double length = c - a;
    return p * length <= b - a ? a + std::sqrt(p) * (std::sqrt(b - a) * std::sqrt(length))
                               : c - std::sqrt(1.0 - p) * (std::sqrt(c - b) * std::sqrt(length));
}

}  // namespace

}  // namespace distributions

using conventions::call;
using enum conventions::MissingInput;

double TriangularPdf(double x, double minimum, double mode, double maximum) {
    return call<kIsOrdinary>(distributions::triangular_pdf, x, minimum, mode, maximum);
}

void TriangularPdf(double* out, const double* x, std::size_t n, double minimum, double mode,
                   double maximum) {
    call<kIsOrdinary>(distributions::triangular_pdf, out, x, n, minimum, mode, maximum);
}

double TriangularCdf(double x, double minimum, double mode, double maximum, bool upper) {
    return call<kIsOrdinary>(distributions::triangular_cdf, x, minimum, mode, maximum, upper);
}

void TriangularCdf(double* out, const double* x, std::size_t n, double minimum, double mode,
                   double maximum, bool upper) {
    call<kIsOrdinary>(distributions::triangular_cdf, out, x, n, minimum, mode, maximum, upper);
}

double TriangularInvCdf(double p, double minimum, double mode, double maximum) {
    return call<kGivesMissing>(distributions::triangular_inv_cdf, p, minimum, mode, maximum);
}

void TriangularInvCdf(double* out, const double* p, std::size_t n, double minimum, double mode,
                      double maximum) {
    call<kGivesMissing>(distributions::triangular_inv_cdf, out, p, n, minimum, mode, maximum);
}

}  // namespace vela
