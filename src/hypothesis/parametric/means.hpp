#ifndef VELA_HYPOTHESIS_PARAMETRIC_MEANS_HPP
#define VELA_HYPOTHESIS_PARAMETRIC_MEANS_HPP

#include "conventions/call_frame.hpp"
#include "descriptive/mean_and_variance.hpp"
#include "distributions/t.hpp"
#include "hypothesis/interval.hpp"
#include "hypothesis/normal_reference.hpp"

#include <cmath>
#include <cstdint>

/// What the tests of means have in common. All of it runs inside the caller's QuietArithmetic,
/// where a zero standard error or an empty sample gives infinities and NaN instead of a fault.
namespace vela::hypothesis {

/// Reference distribution of the t tests.
struct TReference {
    double df;

    double quantile(double p) const {
        return conventions::quiet_value(distributions::t_inv_cdf, p, df, 0.0);
    }
    double p_value(double statistic, AlternativeHypothesis alternative) const {
        return conventions::quiet_value(distributions::t_p_value, statistic, df,
                                        alternative_code(alternative));
    }
};

/// An estimate with its standard error, referred to a distribution.
template <class Reference>
struct Comparison {
    double estimate;
    double standardError;
    Reference reference;

    template <class Record>
    int write_interval(Record* record, double confidence, IntervalType type) const {
        const Interval interval =
            build_interval(estimate, standardError, confidence, type,
                           [this](double p) { return reference.quantile(p); });
        record->lower = interval.lower;
        record->upper = interval.upper;
        return interval.status;
    }

    template <class Record>
    void write_test(Record* record, AlternativeHypothesis alternative,
                    double hypothesizedValue) const {
        record->statistic = (estimate - hypothesizedValue) / standardError;
        record->pValue = reference.p_value(record->statistic, alternative);
    }

    /// The test belongs to a valid interval only.
    template <class Record>
    int write_interval_and_test(Record* record, double confidence, IntervalType type,
                                AlternativeHypothesis alternative, double hypothesizedValue) const {
        const int status = write_interval(record, confidence, type);
        if (status == conventions::kSuccess) {
            write_test(record, alternative, hypothesizedValue);
        }
        return status;
    }
};

inline double standard_error(double stDev, std::uint32_t count) {
    return stDev / std::sqrt(static_cast<double>(count));
}

inline void write_summary(const descriptive::MeanAndVariance& summary, double* mean,
                          double* stDev) {
    *mean = summary.mean;
    *stDev = std::sqrt(summary.variance);
}

inline void summarize(const double* x, std::uint32_t count, double* mean, double* stDev) {
    const auto summary = descriptive::mean_and_variance({x, count});
    write_summary(summary, mean, stDev);
}

}  // namespace vela::hypothesis

#endif
