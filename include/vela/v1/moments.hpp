#ifndef VELA_V1_MOMENTS_HPP
#define VELA_V1_MOMENTS_HPP

#include "vela/api.hpp"

#include <cstdint>

/// Sums, mean, variance and higher moments of a sample.
///
/// Every function takes n observations x, which may be null when n is 0, and allocates nothing.
/// None looks for a missing value: NaN, an infinity or ::MissingValue takes part in the arithmetic.
/// Results for which there are too few observations are NaN. Output arrays may be x itself.
///
/// The functions run in the floating-point state that they find. In the default state nothing is
/// thrown; where the host has armed the traps, an overflow or a division by zero traps.
///
/// Running quantities are accumulated by compensated steps, so that the error does not grow with n;
/// the compensation itself is not part of a result. Results are the same bits on every machine.
/// @see Kahan (1965), Further remarks on reducing truncation errors, CACM 8
namespace vela::v1 {

/// Sum of the observations; NaN for n = 0.
///
/// @accuracy largest error measured 1.1 x 2^-53 of the sum of magnitudes (400 samples of 2 to 3000
///           values, means up to 10^6 times the spread)
VELA_API double GetSum(const double* x, unsigned int n);

/// out[i] = x[0] + ... + x[i], each as GetSum() gives it.
///
/// @param out  receives n sums; may be x
VELA_API void GetCumulativeSums(const double* x, unsigned int n, double* out);

/// out[i] = x[i] / sum, where a sum of 0 gives infinities and NaN.
///
/// @param out  receives n proportions; may be x
/// @return the sum, as GetSum() gives it
VELA_API double GetProportions(const double* x, unsigned int n, double* out);

/// Sample mean; NaN for n = 0.
///
/// @accuracy as GetSampleMeanAndVariance(), whose mean it is bit for bit
VELA_API double GetSampleMean(const double* x, unsigned int n);

/// Sample variance, divisor n - 1; NaN for n = 0, 0 for n = 1.
VELA_API double GetSampleVariance(const double* x, unsigned int n);

/// The same variance about the mean, from the sums of deviations from a shift and of their squares:
/// (S2 - S1^2 / n) / (n - 1). At the mean this is the corrected two-pass variance.
///
/// @param center  the shift; digits are lost as it moves away from the data by more than their
///                spread
/// @see Chan, Golub & LeVeque (1983), Algorithms for computing the sample variance, The American
///      Statistician 37
VELA_API double GetSampleVariance(const double* x, unsigned int n, double center);

/// Sample mean and variance (divisor n - 1) in one pass.
///
/// @param mean      receives the mean; NaN for n = 0
/// @param variance  receives the variance; NaN for n = 0, 0 for n = 1
/// @accuracy on the samples of GetSum(), the largest errors measured: of the mean, 1 x 2^-53 of the
///           largest magnitude; of the variance, relative, 1.7 x 2^-53 sqrt(1 + mean^2 / variance),
///           about what rounding the data once would cost
/// @see Welford (1962), Note on a method for calculating corrected sums of squares and products,
///      Technometrics 4
VELA_API void GetSampleMeanAndVariance(const double* x, unsigned int n, double* mean,
                                       double* variance);

/// The mean and the sums of the second, third and fourth powers of the deviations from it.
///
/// @param out  receives the first k of mean, M2, M3, M4; NaN from the fifth slot on. n = 0: NaN;
///             n = 1: the observation and zeros
/// @param k    number of slots; 0 writes nothing
/// @return 0, or 30011 when k is above 4
/// @accuracy to rounding up to n = 65537. Beyond it the weight of each value in the fourth power
///           sum deliberately keeps the low 32 bits of a product only, so M4 falls short.
/// @see Terriberry (2007), Computing higher-order moments online; Pebay (2008), Formulas for robust
///      one-pass parallel computation of covariances and arbitrary-order statistical moments
VELA_API int GetCenteredOrderKPowerSums(const double* x, unsigned int n, double* out,
                                        unsigned int k);

/// Bias-adjusted skewness G1 and excess kurtosis G2.
///
/// G1 = n sqrt(n - 1) / (n - 2) M3 / M2^1.5,
/// G2 = (n - 1) / ((n - 2) (n - 3)) (n (n + 1) M4 / M2^2 - 3 (n - 1)).
///
/// As in the host application, constant observations give NaN, and beyond 65537 observations the
/// kurtosis inherits M4 of GetCenteredOrderKPowerSums().
///
/// @param skewness  receives G1; NaN for n < 3
/// @param kurtosis  receives G2; NaN for n < 4
/// @accuracy largest errors measured, in units of 1 + |mean| / standard deviation: 4e-16 of the
///           larger of 1 and |G1|, 1e-15 of |G2| + 3 (300 samples of 4 to 300 observations)
/// @see Joanes & Gill (1998), Comparing measures of sample skewness and kurtosis, The Statistician
///      47
VELA_API void GetKroSkewnessAndKurtosis(const double* x, unsigned int n, double* skewness,
                                        double* kurtosis);

/// First and second moments. Every double is NaN and the count 0 at first.
struct VELA_API SecondSampleMoments {
    SecondSampleMoments();
    SecondSampleMoments(const SecondSampleMoments& other);
    SecondSampleMoments(SecondSampleMoments&& other) noexcept;
    SecondSampleMoments& operator=(const SecondSampleMoments& other);
    SecondSampleMoments& operator=(SecondSampleMoments&& other) noexcept;
    ~SecondSampleMoments() = default;

    double variance;      ///< sample variance, divisor n - 1; 0 for n = 1
    double sumOfSquares;  ///< sum of the squared observations, (n - 1) variance + n mean^2
    double mean;          ///< sample mean
    double sum;           ///< n mean
    std::uint32_t count;  ///< n; input
};

/// Fills a record from record->count observations; for a count of 0 every double becomes NaN.
///
/// @param record  in: count; out: the four doubles
VELA_API void GetSecondSampleMoments(SecondSampleMoments* record, const double* x);

}  // namespace vela::v1

#endif
