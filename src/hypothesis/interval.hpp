#ifndef VELA_HYPOTHESIS_INTERVAL_HPP
#define VELA_HYPOTHESIS_INTERVAL_HPP

#include "conventions/quiet_nan.hpp"
#include "conventions/status.hpp"
#include "vela/hypothesis.hpp"

#include <limits>

namespace vela::hypothesis {

struct Interval {
    double lower;
    double upper;
    int status;
};

/// The confidence interval of every test: estimate plus or minus a quantile times the standard
/// error. `quantile` maps a lower-tail probability to the quantile of the reference distribution,
/// NaN where there is none.
template <class Quantile>
Interval build_interval(double estimate, double standardError, double confidence, IntervalType type,
                        Quantile quantile) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    switch (type) {
        case IntervalType::TwoSided: {
            const double reach = quantile((confidence + 1.0) * 0.5) * standardError;
            return {estimate - reach, estimate + reach, conventions::kSuccess};
        }
        case IntervalType::UpperBound:
            return {-infinity, estimate + quantile(confidence) * standardError,
                    conventions::kSuccess};
        case IntervalType::LowerBound:
            return {estimate - quantile(confidence) * standardError, infinity,
                    conventions::kSuccess};
    }
    return {conventions::kNaN, conventions::kNaN, conventions::kInvalidIntervalType};
}

}  // namespace vela::hypothesis

#endif
