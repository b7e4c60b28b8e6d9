#include "kernels/complement_power.hpp"

#include "kernels/beta_log.hpp"

#include <cmath>

namespace vela::kernels {

double complement_power(double p, double n) {
    const double logQ = std::log1p(-p);
    if (n > 1e300 && logQ < -1.0) {
        return 0.0;
    }
    const double exponent = n * logQ;
    if (exponent > -4.0 || exponent < -745.0) {
        return exponent < -745.0 ? 0.0 : std::exp(exponent);
    }
    if (p > 0.5) {
        return std::pow(1.0 - p, n);  // 1 - p is exact
    }
    const DoubleDouble accurate = log1p_two_doubles({-p, 0.0}) * n;
    return std::exp(accurate.hi) * (1.0 + accurate.lo);
}

double event_within(double p, double n) {
    const double none = complement_power(p, n);
    return none < 0.5 ? 1.0 - none : -std::expm1(n * std::log1p(-p));
}

}  // namespace vela::kernels
