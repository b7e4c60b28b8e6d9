#ifndef VELA_V0_ONE_SAMPLE_Z_HPP
#define VELA_V0_ONE_SAMPLE_Z_HPP

#include "vela/api.hpp"
#include "vela/hypothesis.hpp"

#include <cstdint>

/// One-sample Z test of a mean with known standard deviation, and its confidence interval.
///
/// Every overload returns a status: 0, or 30002 for an interval type outside -1..1 (both ends NaN,
/// no test). Nothing is thrown, whatever floating-point state the caller left. A standard error of
/// 0 gives an infinite or NaN statistic, a confidence outside (0, 1) NaN ends, and a P-value that
/// cannot be computed is NaN, all with status 0.
namespace vela::v0 {

/// Record of the one-sample Z test. Every double is NaN and the count 0 at first; a field that an
/// overload does not compute keeps its value.
struct VELA_API OneSampleZ {
    OneSampleZ();
    OneSampleZ(const OneSampleZ& other);
    OneSampleZ(OneSampleZ&& other) noexcept;
    OneSampleZ& operator=(const OneSampleZ& other);
    OneSampleZ& operator=(OneSampleZ&& other) noexcept;
    ~OneSampleZ() = default;

    double mean;          ///< sample mean; input of the summary overloads
    double stDev;         ///< sample standard deviation, written by the data overloads; not used
    double seMean;        ///< sigma / sqrt(count)
    double lower;         ///< lower end of the interval for the mean
    double upper;         ///< upper end of the interval for the mean
    double statistic;     ///< Z = (mean - hypothesizedValue) / seMean
    double pValue;        ///< P-value of Z
    std::uint32_t count;  ///< number of observations; input
};

/// Interval from record->mean and record->count.
///
/// @param record      in: mean, count; out: seMean, lower, upper
/// @param sigma       known standard deviation of one observation, >= 0
/// @param confidence  fraction in (0, 1), such as 0.95
/// @param type        which ends the interval has
/// @accuracy given the estimate and its standard error, that of NormalInvCdf() for the ends
///           and of NormalPValue() for the P-value
VELA_API int RunOneSampleZ(OneSampleZ* record, double sigma, double confidence, IntervalType type);

/// The same with the test of hypothesizedValue; also writes statistic and pValue.
VELA_API int RunOneSampleZ(OneSampleZ* record, double sigma, double confidence, IntervalType type,
                           AlternativeHypothesis alternative, double hypothesizedValue);

/// Mean and stDev from record->count observations x, then as above. x may be null when count is 0.
VELA_API int RunOneSampleZ(OneSampleZ* record, const double* x, double sigma, double confidence,
                           IntervalType type);
/// The same with the test.
VELA_API int RunOneSampleZ(OneSampleZ* record, const double* x, double sigma, double confidence,
                           IntervalType type, AlternativeHypothesis alternative,
                           double hypothesizedValue);

}  // namespace vela::v0

#endif
