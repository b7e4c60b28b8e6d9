#ifndef VELA_NORMAL_HPP
#define VELA_NORMAL_HPP

#include "vela/api.hpp"

#include <cstddef>

/// The normal distribution: mean (finite, unit of x) and standard deviation sd (> 0, unit of x).
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does, and bracket the
/// floating-point state once; out and x may be the same array, and n = 0 touches neither.
/// Parameters are not checked: sd <= 0 gives what the formulas give. A floating-point fault leaves
/// the call as an exception on a thread registered with RegisterKroSigfpeHandler() and makes the
/// result NaN on any other.
namespace vela {

/// Density of the normal distribution,
/// f(x) = exp(-z^2 / 2) / (sd sqrt(2 pi)) with z = (x - mean) / sd.
///
/// @param x     evaluation point, unit of sd; ::MissingValue is an ordinary number here
/// @param mean  finite
/// @param sd    > 0
/// @return density >= 0; 0 where the computation overflows, as for sd = 0; a NaN argument is a
///         fault
/// @accuracy 7e-14 relative over densities down to 1e-280
VELA_API double NormalPdf(double x, double mean, double sd);
/// The same for n values.
VELA_API void NormalPdf(double* out, const double* x, std::size_t n, double mean, double sd);

/// Lower or upper tail of the normal distribution, F(x) = Phi((x - mean) / sd).
///
/// @param x      evaluation point, unit of sd; ::MissingValue gives NaN
/// @param mean   finite
/// @param sd     > 0
/// @param upper  true: P(X > x); false: P(X <= x)
/// @return probability in [0, 1]; exactly 0.5 for x == mean, whatever sd is; a NaN argument and
///         sd = 0 are faults
/// @accuracy 6e-10 relative in the smaller tail, which is exactly 0 beyond 36.29 standard
///           deviations
/// @see Didonato & Morris (1986), Computation of the incomplete gamma function ratios and their
///      inverse, ACM TOMS 12
VELA_API double NormalCdf(double x, double mean, double sd, bool upper);
/// The same for n values.
VELA_API void NormalCdf(double* out, const double* x, std::size_t n, double mean, double sd,
                        bool upper);

/// Quantile of the normal distribution: the x with P(X <= x) = p.
///
/// @param p     lower-tail probability in (0, 1); ::MissingValue gives NaN
/// @param mean  finite
/// @param sd    > 0
/// @return the quantile; NaN for p outside (0, 1), for a NaN argument, and for p below 4.2e-284,
///         the smallest tail that NormalCdf() resolves
/// @accuracy 1.1e-9 relative in the standardised quantile z, by design; the tail at the result
///           differs from p by up to z^2 times that
/// @see Beasley & Springer (1977), Algorithm AS 111, Applied Statistics 26, for the start
VELA_API double NormalInvCdf(double p, double mean, double sd);
/// The same for n values.
VELA_API void NormalInvCdf(double* out, const double* p, std::size_t n, double mean, double sd);

}  // namespace vela

#endif
