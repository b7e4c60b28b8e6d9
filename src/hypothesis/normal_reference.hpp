#ifndef VELA_HYPOTHESIS_NORMAL_REFERENCE_HPP
#define VELA_HYPOTHESIS_NORMAL_REFERENCE_HPP

#include "conventions/call_frame.hpp"
#include "distributions/normal.hpp"
#include "vela/hypothesis.hpp"

#include <algorithm>

/// The standard normal distribution as the tests refer to it. All of it runs inside the caller's
/// QuietArithmetic, and a result that the kernel cannot give is NaN.
namespace vela::hypothesis {

inline EAlternative alternative_code(AlternativeHypothesis alternative) {
    return static_cast<EAlternative>(alternative);
}

/// Reference distribution of the Z test and of every normal approximation.
struct NormalReference {
    double quantile(double p) const {
        return conventions::quiet_value(distributions::normal_inv_cdf, p, 0.0, 1.0);
    }
    /// Exactly 1/2 at 0, which the kernel reproduces to rounding only.
    double lower_tail(double z) const {
        return z == 0.0 ? 0.5
                        : conventions::quiet_value(distributions::normal_cdf, z, 0.0, 1.0, false);
    }
    double p_value(double statistic, AlternativeHypothesis alternative) const {
        return conventions::quiet_value(distributions::normal_p_value, statistic,
                                        alternative_code(alternative));
    }
};

/// What is added to a discrete statistic before a normal distribution approximates it: half a step
/// toward the mean, and for the two-sided alternative never beyond it.
inline double continuity_correction(double statistic, double mean,
                                    AlternativeHypothesis alternative) {
    switch (alternative) {
        case AlternativeHypothesis::LessThan: return 0.5;
        case AlternativeHypothesis::GreaterThan: return -0.5;
        case AlternativeHypothesis::NotEqual:
            return statistic <= mean ? std::min(mean - statistic, 0.5)
                                     : -std::min(statistic - mean, 0.5);
    }
    return 0.0;
}

}  // namespace vela::hypothesis

#endif
