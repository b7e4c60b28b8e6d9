#ifndef VELA_V0_ONE_SAMPLE_T_HPP
#define VELA_V0_ONE_SAMPLE_T_HPP

#include "vela/api.hpp"
#include "vela/hypothesis.hpp"

#include <cstdint>

/// One-sample t test of a mean, and its confidence interval.
///
/// Every overload returns a status: 0, or 30002 for an interval type outside -1..1 (both ends NaN,
/// no test). Nothing is thrown, whatever floating-point state the caller left. Fewer than two
/// observations give NaN ends and a NaN P-value (the open end of a one-sided interval stays
/// infinite), a standard error of 0 an infinite or NaN statistic, a confidence outside (0, 1) NaN
/// ends, all with status 0.
namespace vela::v0 {

/// Record of the one-sample t test. Every double is NaN and the count 0 at first; a field that an
/// overload does not compute keeps its value.
struct VELA_API OneSampleT {
    OneSampleT();
    OneSampleT(const OneSampleT& other);
    OneSampleT(OneSampleT&& other) noexcept;
    OneSampleT& operator=(const OneSampleT& other);
    OneSampleT& operator=(OneSampleT&& other) noexcept;
    ~OneSampleT() = default;

    double mean;          ///< sample mean; input of the summary overloads
    double stDev;         ///< sample standard deviation; input of the summary overloads
    double seMean;        ///< stDev / sqrt(count)
    double lower;         ///< lower end of the interval for the mean
    double upper;         ///< upper end of the interval for the mean
    double statistic;     ///< t = (mean - hypothesizedValue) / seMean
    double pValue;        ///< P-value of t at count - 1 degrees of freedom
    std::uint32_t count;  ///< number of observations; input
};

/// Interval from record->mean, record->stDev and record->count.
///
/// @param record      in: mean, stDev, count; out: seMean, lower, upper
/// @param confidence  fraction in (0, 1), such as 0.95
/// @param type        which ends the interval has
/// @accuracy given the estimate and its standard error, that of TInvCdf() for the ends and
///           of TPValue() for the P-value
/// @see Student (1908), The probable error of a mean, Biometrika 6
VELA_API int RunOneSampleT(OneSampleT* record, double confidence, IntervalType type);

/// The same with the test of hypothesizedValue; also writes statistic and pValue.
VELA_API int RunOneSampleT(OneSampleT* record, double confidence, IntervalType type,
                           AlternativeHypothesis alternative, double hypothesizedValue);

/// Mean and stDev from record->count observations x, then as above. x may be null when count is 0.
VELA_API int RunOneSampleT(OneSampleT* record, const double* x, double confidence,
                           IntervalType type);
/// The same with the test.
VELA_API int RunOneSampleT(OneSampleT* record, const double* x, double confidence,
                           IntervalType type, AlternativeHypothesis alternative,
                           double hypothesizedValue);

}  // namespace vela::v0

#endif
