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

/// How far a discrete statistic lies from its mean for a normal distribution that approximates it,
/// corrected for continuity: by half a step against the alternative, and toward the mean but never
/// beyond it for the two-sided one.
inline double corrected_distance(double statistic, double mean, AlternativeHypothesis alternative) {
    double correction = 0.0;
    switch (alternative) {
        case AlternativeHypothesis::LessThan: correction = 0.5; break;
        case AlternativeHypothesis::GreaterThan: correction = -0.5; break;
        case AlternativeHypothesis::NotEqual:
            correction = statistic <= mean ? std::min(mean - statistic, 0.5)
                                           : -std::min(statistic - mean, 0.5);
            break;
    }
    return statistic + correction - mean;
}

}  // namespace vela::hypothesis

#endif
