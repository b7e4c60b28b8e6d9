#include "kernels/complement_power.hpp"

#include "kernels/beta_log.hpp"

#include <cmath>

namespace vela::kernels {

double complement_power(double p, double n) {
    constexpr double manyTrials = 1e7;
    if (n < manyTrials) {
        const double q = 1.0 - p;
        const double lost = (1.0 - q) - p;  // what no double holds of 1 - p
        return std::pow(q, n) * (1.0 + n * (lost / q));
    }
    const double logQ = std::log1p(-p);
    if (n > 1e300 && logQ < -1.0) {
        return 0.0;
    }
    const double exponent = n * logQ;
    if (exponent > -4.0 || exponent < -745.0) {
        return exponent < -745.0 ? 0.0 : std::exp(exponent);
    }
    const DoubleDouble accurate = log1p_two_doubles({-p, 0.0}) * n;
    return std::exp(accurate.hi) * (1.0 + accurate.lo);
}

EventOrNone event_or_none(double p, double n) {
    constexpr double logHalf = -0.6931471805599453;
    const double logQ = std::log1p(-p);
    if (logQ > logHalf / n) {
        const double event = -std::expm1(n * logQ);
        return {1.0 - event, event};
    }
    const double none = complement_power(p, n);
    return {none, 1.0 - none};
}

}  // namespace vela::kernels
