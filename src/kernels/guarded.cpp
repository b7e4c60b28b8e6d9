#include "kernels/guarded.hpp"

#include "conventions/fault.hpp"
#include "kernels/fuzzy_compare.hpp"

#include <cmath>
#include <stdexcept>

namespace vela::kernels {

const double exp_overflow_bound = std::nextafter(std::log(1.7976931348623157e308), 0.0);

void throw_float_overflow() { throw conventions::Fault<std::runtime_error>("float overflow"); }

double safe_sqrt(double x) {
    if (!std::isgreaterequal(x, 0.0)) {  // quiet: NaN has its own message
        throw conventions::Fault<std::invalid_argument>("sqrt of a negative argument");
    }
    return std::sqrt(x);
}

double safe_exp(double x) {
    if (x > exp_overflow_bound) {
        throw_float_overflow();
    }
    return x < -exp_overflow_bound ? 0.0 : std::exp(x);
}

double safe_log(double x) {
    if (x == 0.0) {
        throw_float_overflow();
    }
    if (!std::isgreater(x, 0.0)) {
        throw conventions::Fault<std::invalid_argument>("log of a negative argument");
    }
    return std::log(x);
}

namespace {

/// base^exponent, where logBase is the natural logarithm of |base|.
double bounded_pow(double base, double exponent, double logBase) {
    // Of a huge exponent the signs alone decide: the product would overflow.
    const bool isHuge = std::fabs(exponent) > 1e300 && logBase != 0.0;
    const double huge = (exponent > 0.0) == (logBase > 0.0) ? 1e300 : -1e300;
    const double logarithm = isHuge ? huge : (logBase == 0.0 ? 0.0 : exponent * logBase);
    if (logarithm < -exp_overflow_bound) {
        return 0.0;
    }
    if (logarithm > exp_overflow_bound) {
        throw_float_overflow();
    }
    return std::pow(base, exponent);
}

}  // namespace

double safe_pow(double x, double y) {
    if (x < 0.0) {
        const double rounded = std::round(y);
        if (rounded != y && fuzzy_compare(y, rounded, 0.0) != 0) {
            throw conventions::Fault<std::invalid_argument>(
                "negative number raised to a noninteger power");
        }
        return bounded_pow(x, rounded, std::log(-x));
    }
    if (x == 0.0) {
        if (y < 0.0) {
            throw conventions::Fault<std::invalid_argument>("zero raised to a negative power");
        }
        return y == 0.0 ? 1.0 : 0.0;
    }
    return bounded_pow(x, y, std::log(x));
}

}  // namespace vela::kernels
