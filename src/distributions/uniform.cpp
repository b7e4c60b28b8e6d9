#include "vela/uniform.hpp"

#include "conventions/call_frame.hpp"

#include <cmath>

namespace vela {
namespace distributions {
namespace {

// Comparisons are the quiet ones: the caller's floating-point state stays untouched.

double uniform_pdf(double x, double a, double b) {
    if (x != x || !std::isless(a, b)) {
        return MissingValue;
    }
    return x < a || x > b ? 0.0 : 1.0 / (b - a);
}

double uniform_cdf(double x, double a, double b, bool upper) {
    if (std::islessequal(x, a)) {
        return upper ? 1.0 : 0.0;
    }
    if (std::isgreaterequal(x, b)) {
        return upper ? 0.0 : 1.0;
    }
    return (upper ? b - x : x - a) / (b - a);
}

double uniform_inv_cdf(double p, double a, double b) {
    if (p == 0.0) {
        return a;
    }
    if (p == 1.0) {
        return b;
    }
    return (b - a) * p + a;
}

}  // namespace

}  // namespace distributions

using conventions::call_unbracketed;
using enum conventions::MissingInput;

double UniformPdf(double x, double minimum, double maximum) {
    return call_unbracketed<kIsOrdinary>(distributions::uniform_pdf, x, minimum, maximum);
}

void UniformPdf(double* out, const double* x, std::size_t n, double minimum, double maximum) {
    call_unbracketed<kIsOrdinary>(distributions::uniform_pdf, out, x, n, minimum, maximum);
}

double UniformCdf(double x, double minimum, double maximum, bool upper) {
    return call_unbracketed<kIsOrdinary>(distributions::uniform_cdf, x, minimum, maximum, upper);
}

void UniformCdf(double* out, const double* x, std::size_t n, double minimum, double maximum,
                bool upper) {
    call_unbracketed<kIsOrdinary>(distributions::uniform_cdf, out, x, n, minimum, maximum, upper);
}

double UniformInvCdf(double p, double minimum, double maximum) {
    return call_unbracketed<kIsOrdinary>(distributions::uniform_inv_cdf, p, minimum, maximum);
}

void UniformInvCdf(double* out, const double* p, std::size_t n, double minimum, double maximum) {
    call_unbracketed<kIsOrdinary>(distributions::uniform_inv_cdf, out, p, n, minimum, maximum);
}

}  // namespace vela
