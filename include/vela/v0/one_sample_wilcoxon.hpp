#ifndef VELA_V0_ONE_SAMPLE_WILCOXON_HPP
#define VELA_V0_ONE_SAMPLE_WILCOXON_HPP

#include "vela/api.hpp"
#include "vela/hypothesis.hpp"

#include <cstdint>

/// Wilcoxon signed-rank test of a median, with the Hodges-Lehmann estimate and its interval, all by
/// normal approximation.
///
/// The Walsh averages of n observations are (x_i + x_j) / 2 for i <= j, N = n (n + 1) / 2 of them.
/// They are never formed: time is that of sorting for practical data, memory proportional to n.
///
/// The status is always 0. No observations, or a NaN or an infinity among them, leave every result
/// NaN. A failed allocation is thrown as std::bad_alloc; what was not computed before is NaN.
namespace vela::v0 {

/// Record of the one-sample Wilcoxon test. Every double is NaN and the count 0 at first.
struct VELA_API OneSampleWilcoxon {
    OneSampleWilcoxon();
    OneSampleWilcoxon(const OneSampleWilcoxon& other);
    OneSampleWilcoxon(OneSampleWilcoxon&& other) noexcept;
    OneSampleWilcoxon& operator=(const OneSampleWilcoxon& other);
    OneSampleWilcoxon& operator=(OneSampleWilcoxon&& other) noexcept;
    ~OneSampleWilcoxon() = default;

    double estimate;            ///< median of the Walsh averages
    double achievedConfidence;  ///< confidence of the interval by normal approximation
    double lower;               ///< lower limit, a Walsh average or minus infinity
    double upper;               ///< upper limit, a Walsh average or plus infinity
    double statistic;           ///< W: Walsh averages above the hypothesised median, ties half
    double pValue;              ///< P-value of W
    std::uint32_t count;        ///< in: number of observations; see the test for out
};

/// Estimate and interval; statistic and pValue become NaN.
///
/// With mu = N / 2, sigma^2 = n (n + 1) (2 n + 1) / 24 and z the normal quantile of 1 - confidence
/// (half of it for a two-sided interval), k is the integer part of mu + z sigma, one less if it
/// exceeds mu - 1. The limits are the (k + 1)-th smallest and largest Walsh average, exactly, each
/// rounded once, and the achieved confidence is that of k + 1/2. One observation has an estimate
/// only; a limit of which there are too few averages is NaN, as are the limits for a type outside
/// -1..1. A confidence without a quantile (1 or more, NaN) leaves both limits and the achieved
/// confidence NaN, whatever the type.
///
/// @param record      in: count; out: everything else
/// @param x           record->count observations; may be null when count is 0
/// @param confidence  fraction in (0, 1), such as 0.95
/// @param type        which limits the interval has; the other one is infinite
/// @accuracy estimate and limits are exact; the achieved confidence and the P-value are
///           those of the normal distribution to 1e-9
/// @see Hollander, Wolfe & Chicken (2014), Nonparametric Statistical Methods, 3rd ed., ch. 3
VELA_API int RunKroOneSampleWilcoxon(OneSampleWilcoxon* record, const double* x, double confidence,
                                     IntervalType type);

/// The same with the test of hypothesizedMedian.
///
/// Observations within a tolerance of the hypothesised median, 8 units of rounding of the largest
/// magnitude and at least 1e-12, count as equal to it and are left out; so are Walsh averages twice
/// as close. pValue refers W to the normal distribution with mean n (n + 1) / 4 and variance
/// n (n + 1) (2 n + 1) / 24 for the n observations that are left, with a correction for continuity
/// and none for ties.
///
/// @param record              out: count becomes the number of observations that differ from the
///                            hypothesised median; when it is 0 statistic and pValue are NaN
/// @param hypothesizedMedian  unit of x; NaN leaves statistic and pValue NaN
VELA_API int RunKroOneSampleWilcoxon(OneSampleWilcoxon* record, const double* x, double confidence,
                                     IntervalType type, AlternativeHypothesis alternative,
                                     double hypothesizedMedian);

}  // namespace vela::v0

#endif
