#ifndef VELA_DISTRIBUTIONS_DISCRETE_FAMILY_HPP
#define VELA_DISTRIBUTIONS_DISCRETE_FAMILY_HPP

#include "distributions/tails.hpp"
#include "kernels/count.hpp"

/// What every family of whole numbers does with its kernels.
namespace vela::distributions {

/// The mass at a whole x, and 0 elsewhere, that the kernel mass(k, parameters...) returns.
template <class Mass, class... Parameters>
double mass_at(Mass mass, double x, const Parameters&... parameters) {
    const kernels::Count count = kernels::count_at(x);
    constexpr double noOutcome = -1.0;  // for the verdict on the parameters
    const double k = count.isWhole || x != x ? count.k : noOutcome;
    const double result = mass(k, parameters...);
    return conventions::kernel_failed() ? MissingValue : count.isWhole ? result : 0.0;
}

/// The tails at the largest whole number up to x.
template <class Kernel, class... Parameters>
Tails tails_at(Kernel kernel, double x, const Parameters&... parameters) {
    const double k = kernels::count_at(x).k;
    Tails tails{};
    kernel(k, parameters..., &tails.lower, &tails.upper);
    return conventions::kernel_failed() ? kMissingTails : tails;
}

/// The quantile that the kernel quantile(p, parameters..., &k) writes.
template <class Quantile, class... Parameters>
double quantile_at(Quantile quantile, double p, const Parameters&... parameters) {
    double k = 0.0;
    quantile(p, parameters..., &k);
    return conventions::kernel_failed() ? MissingValue : k;
}

}  // namespace vela::distributions

#endif
