#ifndef VELA_V1_ORDER_STATISTICS_HPP
#define VELA_V1_ORDER_STATISTICS_HPP

#include "vela/api.hpp"

/// Statistics that need the data in order. x(1) <= ... <= x(n) is the sample in ascending order;
/// NaN stands after +infinity.
///
/// The caller's data is copied, never reordered; it may be null for n = 0. Nothing is thrown, and
/// the time is linear in n for any data. A status is 0, or 30001 when a working copy could not be
/// allocated. An output array may be one of the input arrays.
namespace vela::v1 {

/// Sample quantiles by one of the nine definitions of Hyndman and Fan.
///
/// With h the position of the table, j its integer part and g its fractional part (methods 1 and 2
/// round up and 3 to the nearest even position instead of weighting), the quantile is
/// (1 - g) x(j) + g x(j + 1), x(1) below position 1 and x(n) from position n on.
///
/// | method  | h                 |
/// |---------|-------------------|
/// | 1, 2, 4 | n p               |
/// | 3       | n p - 0.5         |
/// | 5       | n p + 0.5         |
/// | 6       | n p + p           |
/// | 7       | n p + (1 - p)     |
/// | 8       | n p + (p + 1)/3   |
/// | 9       | n p + (p + 1.5)/4 |
///
/// Method 1 takes x(j + 1) if g > 0, else x(j); method 2 the same, but for g = 0 the mean of x(j)
/// and x(j + 1); method 3 takes x(j) if g = 0 and j is even, else x(j + 1).
///
/// @param x              n observations
/// @param n              number of observations; 0 makes every quantile NaN
/// @param method         1 to 9; 6 is the one of the summaries of this library
/// @param out            receives `count` quantiles; may be x or probabilities
/// @param probabilities  0 gives x(1), 1 gives x(n); outside [0, 1] and NaN give NaN
/// @param count          number of probabilities
/// @return 0, 30001, or 30017 for a method outside 1..9, which is looked at after the copy is made;
///         with either error `out` is not written
/// @accuracy the weighted sum as written, in doubles: a NaN or infinite x(j + 1) gives NaN also
///           where its weight is 0
/// @see Hyndman & Fan (1996), Sample quantiles in statistical packages, Am. Statistician 50
VELA_API int GetSampleQuantiles(const double* x, unsigned int n, int method, double* out,
                                const double* probabilities, unsigned int count);

/// The permutation that sorts x: x[order[0]] <= x[order[1]] <= ...; equal values, and likewise NaN,
/// in the order of their positions.
///
/// @param x      n observations
/// @param n      number of observations
/// @param order  receives n positions, from 0. Short of memory it is found in place, more slowly
VELA_API void GetOrder(const double* x, unsigned int n, unsigned int* order);

/// Ranks from 1 to n; equal values share the average of the ranks that they span, and each NaN has
/// a rank of its own, after all numbers.
///
/// @param x      n observations
/// @param n      number of observations
/// @param ranks  receives n ranks, all NaN with status 30001; may be x
/// @return 0 or 30001
VELA_API int GetRank(const double* x, unsigned int n, double* ranks);

/// The most frequent values, in ascending order. Data without a repeated value has no mode; a NaN
/// is never one.
///
/// @param x              n observations
/// @param n              number of observations
/// @param modes          receives up to maxModes modes, the smallest first; the slots left over,
///                       and all of them with status 30001, are NaN. May be x
/// @param maxModes       slots of `modes`; with 0 nothing is computed and both counts are 0
/// @param numModes       receives the number of modes written
/// @param modeFrequency  receives how often each of them occurs; 0 when no value repeats
/// @return 0 or 30001 (counts 0)
VELA_API int GetMode(const double* x, unsigned int n, double* modes, unsigned int maxModes,
                     unsigned int* numModes, unsigned int* modeFrequency);

/// Trimmed mean: the mean of x(g + 1), ..., x(n - g) with g = n alpha rounded toward zero.
///
/// @param x       n observations
/// @param n       number of observations
/// @param alpha   fraction cut from each end, in [0, 0.5)
/// @param status  receives 0 or 30001
/// @return the compensated running mean of GetSampleMean() in ascending order; NaN for n = 0, for
///         alpha below 0 or NaN, when nothing is left, and with status 30001
VELA_API double GetTrimmedMean(const double* x, unsigned int n, double alpha, int* status);

/// The 5% trimmed mean of the host. It differs from GetTrimmedMean(x, n, 0.05, status) in the
/// number of values cut from each end: g = 0.05 n rounded to the nearest integer, not toward zero.
VELA_API double GetKroTrimmedMean(const double* x, unsigned int n, int* status);

}  // namespace vela::v1

#endif
