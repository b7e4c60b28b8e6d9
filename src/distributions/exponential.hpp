#ifndef VELA_DISTRIBUTIONS_EXPONENTIAL_HPP
#define VELA_DISTRIBUTIONS_EXPONENTIAL_HPP

#include "distributions/tails.hpp"
#include "kernels/chi_square.hpp"
#include "kernels/guarded.hpp"

#include <cmath>

/// What the families built on an exponential share.
namespace vela::distributions {

/// A tail of the exponential distribution with unit scale at t >= 0.
inline double unit_exponential_tail(double t, bool upper) {
    const double e = kernels::safe_exp(-t);
    if (upper) {
        return e;
    }
    if (e <= 0.999) {
        return 1.0 - e;
    }
    // For small t, where 1 - e would lose digits: chi-square with two degrees of freedom at 2t.
    return tails_of(kernels::chi2_df, 2.0 * t, 2.0).lower;
}

/// exp(-exponent) / scale, also where the exponential alone would underflow.
/// @throws std::runtime_error on overflow
inline double exp_over(double exponent, double scale) {
    constexpr double safe = 600.0;
    return std::fabs(exponent) < safe ? std::exp(-exponent) / scale
                                      : kernels::safe_exp(-(exponent + std::log(scale)));
}

}  // namespace vela::distributions

#endif
