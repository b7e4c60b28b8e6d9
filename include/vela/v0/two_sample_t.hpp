#ifndef VELA_V0_TWO_SAMPLE_T_HPP
#define VELA_V0_TWO_SAMPLE_T_HPP

#include "vela/api.hpp"
#include "vela/hypothesis.hpp"

#include <cstdint>

/// Two-sample t test of a difference of means (first minus second), pooled or Welch, and its
/// confidence interval.
///
/// Every overload returns a status: 0, or 30002 for an interval type outside -1..1 (both ends NaN,
/// no test). Nothing is thrown, whatever floating-point state the caller left. Samples too small
/// for the degrees of freedom give NaN ends and a NaN P-value (the open end of a one-sided interval
/// stays infinite), a standard error of 0 an infinite or NaN statistic, a confidence outside (0, 1)
/// NaN ends, all with status 0.
namespace vela::v0 {

/// Record of the two-sample t test. Every double is NaN at first; a field that an overload does not
/// compute keeps its value. Set both counts: a fresh record holds 0 in count1 and 2146959360 in
/// count2 (one NaN pattern stored over both).
struct VELA_API TwoSampleT {
    TwoSampleT();
    TwoSampleT(const TwoSampleT& other);
    TwoSampleT(TwoSampleT&& other) noexcept;
    TwoSampleT& operator=(const TwoSampleT& other);
    TwoSampleT& operator=(TwoSampleT&& other) noexcept;
    ~TwoSampleT() = default;

    double mean1;          ///< mean of sample 1; input of the summary overloads
    double mean2;          ///< mean of sample 2; input of the summary overloads
    double stDev1;         ///< standard deviation of sample 1; input of the summary overloads
    double stDev2;         ///< standard deviation of sample 2; input of the summary overloads
    double seMean1;        ///< stDev1 / sqrt(count1)
    double seMean2;        ///< stDev2 / sqrt(count2)
    double difference;     ///< mean1 - mean2
    double pooledStDev;    ///< pooled standard deviation, written by the pooled form only
    double df;             ///< degrees of freedom; a whole number in the Welch form
    double lower;          ///< lower end of the interval for the difference
    double upper;          ///< upper end of the interval for the difference
    double statistic;      ///< t = (difference - hypothesizedValue) / standard error
    double pValue;         ///< P-value of t at df degrees of freedom
    std::uint32_t count1;  ///< size of sample 1; input
    std::uint32_t count2;  ///< size of sample 2; input
};

/// Interval from the means, standard deviations and counts of the record.
///
/// @param record      in: mean1, mean2, stDev1, stDev2, count1, count2; out: seMean1, seMean2,
///                    difference, df, lower, upper, and pooledStDev in the pooled form
/// @param pooled      true: one variance for both, df = count1 + count2 - 2; false: Welch, with the
///                    Satterthwaite degrees of freedom rounded down
/// @param confidence  fraction in (0, 1), such as 0.95
/// @param type        which ends the interval has
/// @accuracy given the estimate and its standard error, that of TInvCdf() for the ends and
///           of TPValue() for the P-value
/// @see Welch (1947), The generalization of Student's problem when several different population
///      variances are involved, Biometrika 34
VELA_API int RunTwoSampleT(TwoSampleT* record, bool pooled, double confidence, IntervalType type);

/// The same with the test of hypothesizedValue; also writes statistic and pValue.
VELA_API int RunTwoSampleT(TwoSampleT* record, bool pooled, double confidence, IntervalType type,
                           AlternativeHypothesis alternative, double hypothesizedValue);

/// The four summaries from record->count1 observations x1 and record->count2 observations x2, then
/// as above. A sample may be null when its count is 0.
VELA_API int RunTwoSampleT(TwoSampleT* record, const double* x1, const double* x2, bool pooled,
                           double confidence, IntervalType type);
/// The same with the test.
VELA_API int RunTwoSampleT(TwoSampleT* record, const double* x1, const double* x2, bool pooled,
                           double confidence, IntervalType type, AlternativeHypothesis alternative,
                           double hypothesizedValue);

}  // namespace vela::v0

#endif
