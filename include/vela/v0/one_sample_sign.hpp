#ifndef VELA_V0_ONE_SAMPLE_SIGN_HPP
#define VELA_V0_ONE_SAMPLE_SIGN_HPP

#include "vela/api.hpp"
#include "vela/hypothesis.hpp"

#include <cstdint>

/// One-sample sign test of a median, and its confidence intervals.
///
/// The interval between two order statistics [x(d), x(n - d + 1)] covers the median with a
/// probability that is binomial(n, 1/2) and takes few values. d is the smallest count k with
/// P(B <= k) >= (1 - confidence) / 2; the *outer* interval is the one with d and covers at least
/// what was asked for, the *inner* one [x(d + 1), x(n - d)] covers less, and the *interpolated* one
/// lies between them (Hettmansperger & Sheather 1986) and comes near to the confidence for
/// symmetric distributions. A one-sided interval is an end of the two-sided one with confidence
/// 1 - 2 (1 - confidence).
///
/// Every overload returns a status:
///
/// | status | meaning                                                                            |
/// |--------|------------------------------------------------------------------------------------|
/// | 0      | both intervals; or none, when no d belongs to the confidence (NaN, above 1)        |
/// | 10001  | d = 0: not even the range of the sample covers enough, if there is one; inner only |
/// | 10002  | d >= n / 2: outer interval only; the interpolation runs toward the sample median   |
/// | 30001  | no memory for a copy of the data; every double is NaN                              |
/// | 30002  | an interval type outside -1..1; every double is NaN                                |
///
/// Fields of an interval that does not exist are NaN. Nothing is thrown, whatever floating-point
/// state the caller left. NaN among the observations stand after +infinity in the order and count
/// as equal to the hypothesized median.
namespace vela::v0 {

/// Record of the sign test. Every double is NaN and the count 0 at first; each call begins by
/// making the doubles NaN again.
struct VELA_API OneSampleSign {
    OneSampleSign();
    OneSampleSign(const OneSampleSign& other);
    OneSampleSign(OneSampleSign&& other) noexcept;
    OneSampleSign& operator=(const OneSampleSign& other);
    OneSampleSign& operator=(OneSampleSign&& other) noexcept;
    ~OneSampleSign() = default;

    double median;             ///< sample median: the middle value or the mean of the two
    double innerConfidence;    ///< achieved by the inner interval, one-sided if it is
    double outerConfidence;    ///< achieved by the outer interval, one-sided if it is
    double innerLower;         ///< x(d + 1); -infinity for an upper bound
    double interpolatedLower;  ///< between the two; -infinity for an upper bound
    double outerLower;         ///< x(d); -infinity for an upper bound
    double innerUpper;         ///< x(n - d); +infinity for a lower bound
    double interpolatedUpper;  ///< between the two; +infinity for a lower bound with status 0
    double outerUpper;         ///< x(n - d + 1); +infinity for a lower bound
    double innerPosition;      ///< d + 1; n - d for an upper bound
    double outerPosition;      ///< d; n - d + 1 for an upper bound
    double pValue;             ///< of the number of observations above
    double below;              ///< number of observations below the hypothesized median
    double equal;              ///< number of observations neither below nor above it
    double above;              ///< number of observations above the hypothesized median
    std::uint32_t count;       ///< number of observations; input
};

/// Median and intervals from record->count observations x.
///
/// A lower bound with status 10002 keeps the interpolated upper end of the two-sided interval,
/// deliberately; its other upper ends are infinite.
///
/// @param record      in: count; out: everything up to outerPosition
/// @param x           record->count observations; may be null when that is 0
/// @param confidence  fraction in (0, 1), such as 0.95
/// @param type        which ends the intervals have
/// @accuracy confidences within 1e-15 of the exact ones (count 1 to 60, 100, 1000, 1e5 and 1e6)
/// @see Hettmansperger & Sheather (1986), Confidence intervals based on interpolated order
///      statistics, Statistics & Probability Letters 4
VELA_API int RunOneSampleSign(OneSampleSign* record, const double* x, double confidence,
                              IntervalType type);

/// The same with the test of hypothesizedMedian, which also writes pValue, below, equal and above:
/// the number above is binomial with probability 1/2 among those that are not equal. With none
/// left the P-value is 1; for more than 2^31 - 1 of them it is NaN.
///
/// @accuracy relative error of the P-value 1e-15 (counts as above)
/// @see Dixon & Mood (1946), The statistical sign test, JASA 41
VELA_API int RunOneSampleSign(OneSampleSign* record, const double* x, double confidence,
                              IntervalType type, AlternativeHypothesis alternative,
                              double hypothesizedMedian);

/// The same with the normal approximation, corrected for continuity, in place of the binomial
/// distribution for more than 50 observations, in the intervals and in the test.
/// @accuracy relative error of its confidences and P-values 1e-10
VELA_API int RunKroOneSampleSign(OneSampleSign* record, const double* x, double confidence,
                                 IntervalType type);
/// The same with the test.
VELA_API int RunKroOneSampleSign(OneSampleSign* record, const double* x, double confidence,
                                 IntervalType type, AlternativeHypothesis alternative,
                                 double hypothesizedMedian);

}  // namespace vela::v0

#endif
