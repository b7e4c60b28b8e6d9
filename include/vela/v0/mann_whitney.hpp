#ifndef VELA_V0_MANN_WHITNEY_HPP
#define VELA_V0_MANN_WHITNEY_HPP

#include "vela/api.hpp"
#include "vela/hypothesis.hpp"

#include <cstdint>

/// Mann-Whitney test (Wilcoxon rank-sum test) of two samples, with the Hodges-Lehmann estimate of
/// the difference of their locations and its interval, all by normal approximation.
namespace vela::v0 {

/// Record of the Mann-Whitney test. Every double is NaN and the counts 0 at first.
struct VELA_API MannWhitney {
    MannWhitney();
    MannWhitney(const MannWhitney& other);
    MannWhitney(MannWhitney&& other) noexcept;
    MannWhitney& operator=(const MannWhitney& other);
    MannWhitney& operator=(MannWhitney&& other) noexcept;
    ~MannWhitney() = default;

    double median1;             ///< median of sample 1
    double median2;             ///< median of sample 2
    double estimate;            ///< median of the differences x_i - y_j
    double lower;               ///< lower limit, one of the differences; NaN for an upper bound
    double upper;               ///< upper limit, one of the differences; NaN for a lower bound
    double achievedConfidence;  ///< confidence of the interval by normal approximation
    double statistic;           ///< W: sum of the ranks of sample 1 among all, ties at midranks
    double pValue;              ///< P-value of W, without a correction for ties
    double pValueAdjusted;      ///< P-value with ties taken off the variance; -1 without ties
    std::uint32_t count1;       ///< size of sample 1; input
    std::uint32_t count2;       ///< size of sample 2; input
};

/// Medians, estimate, interval and test of samples x and y of n1 and n2 observations.
///
/// There are m = n1 n2 differences x_i - y_j; they are never formed: time is that of sorting for
/// practical data, memory proportional to n1 + n2. With sigma^2 = m (n1 + n2 + 1) / 12 and z the
/// normal quantile of 1 - confidence (half of it for a two-sided interval), k is the integer part
/// of m / 2 + z sigma - 1/2, at least 0. The limits are the (k + 1)-th smallest and largest
/// difference, exactly, and the achieved confidence is that of k + 1/2. pValue refers W to the
/// normal distribution with mean n1 (n1 + n2 + 1) / 2 and variance sigma^2, with a correction for
/// continuity.
///
/// The limits are NaN where k + 1 exceeds m and for a type outside -1..1, with the achieved
/// confidence for a confidence without a quantile (1 or more, NaN). NaN or an infinity in the data
/// leaves estimate and limits NaN, and the rest follows from comparisons, which are false for NaN.
/// A difference beyond the largest double is infinite.
///
/// @param record       in: count1, count2; out: everything else
/// @param x            sample 1
/// @param y            sample 2; may be x
/// @param confidence   fraction in (0, 1), such as 0.95
/// @param type         which limits the interval has; the other one is NaN
/// @param alternative  about the location of x less the location of y
/// @return 0; 30001 when memory could not be allocated and 30023 when a sample is empty or all its
///         values are equal, both with every result NaN. Nothing is thrown.
/// @accuracy estimate and limits are exact; the achieved confidence and the P-values are
///           those of the normal distribution to 1e-9
/// @see Hollander, Wolfe & Chicken (2014), Nonparametric Statistical Methods, 3rd ed., ch. 4
VELA_API int RunKroMannWhitney(MannWhitney* record, const double* x, const double* y,
                               double confidence, IntervalType type,
                               AlternativeHypothesis alternative);

}  // namespace vela::v0

#endif
