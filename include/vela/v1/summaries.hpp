#ifndef VELA_V1_SUMMARIES_HPP
#define VELA_V1_SUMMARIES_HPP

#include "vela/api.hpp"
#include "vela/v1/moments.hpp"

/// Summaries of a sample as the host displays them. Quantiles are those of definition 6, at
/// position (n + 1) p, of GetSampleQuantiles().
///
/// The caller's data is copied, never reordered; it may be null for n = 0, when every double is NaN
/// and every count 0. A status is 0, or 30001 when a working copy could not be allocated. Nothing
/// is thrown.
namespace vela::v1 {

/// Every field is NaN at first.
struct VELA_API FiveNumberSummary {
    FiveNumberSummary();
    FiveNumberSummary(const FiveNumberSummary& other);
    FiveNumberSummary(FiveNumberSummary&& other) noexcept;
    FiveNumberSummary& operator=(const FiveNumberSummary& other);
    FiveNumberSummary& operator=(FiveNumberSummary&& other) noexcept;
    ~FiveNumberSummary() = default;

    double minimum;        ///< smallest observation
    double firstQuartile;  ///< quantile at 0.25
    double median;         ///< quantile at 0.5
    double thirdQuartile;  ///< quantile at 0.75
    double maximum;        ///< largest observation
};

/// What a boxplot shows. Every field is NaN at first.
struct VELA_API KroBoxplotHelper {
    KroBoxplotHelper();
    KroBoxplotHelper(const KroBoxplotHelper& other);
    KroBoxplotHelper(KroBoxplotHelper&& other) noexcept;
    KroBoxplotHelper& operator=(const KroBoxplotHelper& other);
    KroBoxplotHelper& operator=(KroBoxplotHelper&& other) noexcept;
    ~KroBoxplotHelper() = default;

    double minimum;            ///< smallest observation
    double maximum;            ///< largest observation
    double firstQuartile;      ///< quantile at 0.25
    double thirdQuartile;      ///< quantile at 0.75
    double median;             ///< quantile at 0.5
    double medianLower;        ///< lower end of the confidence interval for the median
    double medianUpper;        ///< upper end of that interval
    double lowerHinge;         ///< quantile at h = (n + 3) / (4 (n + 1)), at depth (n + 3) / 4
    double upperHinge;         ///< quantile at 1 - h
    double mean;               ///< sample mean
    double standardDeviation;  ///< sample standard deviation, divisor n - 1
};

/// Minimum, quartiles and maximum, in linear time. The quartiles are those of the host (definition
/// 6), not Tukey's hinges.
///
/// @param r  receives the five numbers; untouched with status 30001
/// @param x  n observations
/// @param n  number of observations
/// @return 0 or 30001
VELA_API int GetKroFiveNumberSummary(FiveNumberSummary* r, const double* x, unsigned int n);

/// Moments, five numbers and modes from one sorted copy, for the host's display of descriptive
/// statistics. Its convention is at most five modes.
///
/// @param moments        in: count, the number of observations; out: the other fields, also with
///                       status 30001, which leaves everything else untouched
/// @param five           receives the five numbers
/// @param modes          receives five slots as of GetMode(); may be x
/// @param numModes       receives the number of modes written
/// @param modeFrequency  receives how often each of them occurs; 0 when no value repeats
/// @param x              moments->count observations
/// @return 0 or 30001
VELA_API int GetKro2013ExtendedSummary(SecondSampleMoments* moments, FiveNumberSummary* five,
                                       double* modes, unsigned int* numModes,
                                       unsigned int* modeFrequency, const double* x);

/// Everything that the host's boxplot shows. Its conventions are quartiles of definition 6, hinges
/// at depth (n + 3) / 4, and an interval for the median from the sign test, interpolated between
/// the two neighbouring intervals of order statistics: with the binomial distribution up to 50
/// observations, with the normal approximation from 51 on.
///
/// @param r           receives all fields; all are NaN with status 30001
/// @param confidence  of the median interval, a fraction such as 0.95. Both ends are NaN where the
///                    sample is too small for it, and where there is no such quantile
/// @param x           n observations
/// @param n           number of observations
/// @return 0 or 30001
/// @accuracy normal probabilities to 1e-9 relative, binomial ones to 1e-13
/// @see Hettmansperger & Sheather (1986), Confidence intervals based on interpolated order
///      statistics, Statistics & Probability Letters 4
VELA_API int RunKroBoxplotHelper(KroBoxplotHelper* r, double confidence, const double* x,
                                 unsigned int n);

}  // namespace vela::v1

#endif
