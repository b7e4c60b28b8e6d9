#ifndef VELA_V0_PAIRED_T_HPP
#define VELA_V0_PAIRED_T_HPP

#include "vela/api.hpp"
#include "vela/hypothesis.hpp"

#include <cstdint>

/// Paired t test of a mean difference (first minus second), and its confidence interval.
///
/// Every overload returns a status: 0; 30001 when the differences cannot be stored; 30002 for an
/// interval type outside -1..1 (both ends NaN, no test). Nothing is thrown, whatever floating-point
/// state the caller left. Fewer than two pairs give NaN ends and a NaN P-value (the open end of a
/// one-sided interval stays infinite), a standard error of 0 an infinite or NaN statistic, a
/// confidence outside (0, 1) NaN ends, all with status 0.
namespace vela::v0 {

/// Record of the paired t test. Every double is NaN and the count 0 at first; a field that an
/// overload does not compute keeps its value.
struct VELA_API PairedT {
    PairedT();
    PairedT(const PairedT& other);
    PairedT(PairedT&& other) noexcept;
    PairedT& operator=(const PairedT& other);
    PairedT& operator=(PairedT&& other) noexcept;
    ~PairedT() = default;

    double mean1;       ///< mean of the first sample, written by the data overloads
    double mean2;       ///< mean of the second sample, written by the data overloads
    double stDev1;      ///< standard deviation of the first sample, written by the data overloads
    double stDev2;      ///< standard deviation of the second sample, written by the data overloads
    double seMean1;     ///< stDev1 / sqrt(count), written by the data overloads
    double seMean2;     ///< stDev2 / sqrt(count), written by the data overloads
    double meanDiff;    ///< mean difference; input of the summary overloads
    double stDevDiff;   ///< standard deviation of the differences; input of the summary overloads
    double seMeanDiff;  ///< stDevDiff / sqrt(count)
    double lower;       ///< lower end of the interval for the mean difference
    double upper;       ///< upper end of the interval for the mean difference
    double statistic;   ///< t = (meanDiff - hypothesizedValue) / seMeanDiff
    double pValue;      ///< P-value of t at count - 1 degrees of freedom
    std::uint32_t count;  ///< number of pairs; input
};

/// Interval from record->meanDiff, record->stDevDiff and record->count.
///
/// @param record      in: meanDiff, stDevDiff, count; out: seMeanDiff, lower, upper
/// @param confidence  fraction in (0, 1), such as 0.95
/// @param type        which ends the interval has
/// @accuracy given the estimate and its standard error, that of TInvCdf() for the ends and
///           of TPValue() for the P-value
/// @see Student (1908), The probable error of a mean, Biometrika 6
VELA_API int RunPairedT(PairedT* record, double confidence, IntervalType type);

/// The same with the test of hypothesizedValue; also writes statistic and pValue.
VELA_API int RunPairedT(PairedT* record, double confidence, IntervalType type,
                        AlternativeHypothesis alternative, double hypothesizedValue);

/// All summaries from record->count pairs (x[i], y[i]), then as above. x and y may be one array,
/// and null when count is 0.
VELA_API int RunPairedT(PairedT* record, const double* x, const double* y, double confidence,
                        IntervalType type);
/// The same with the test.
VELA_API int RunPairedT(PairedT* record, const double* x, const double* y, double confidence,
                        IntervalType type, AlternativeHypothesis alternative,
                        double hypothesizedValue);

}  // namespace vela::v0

#endif
