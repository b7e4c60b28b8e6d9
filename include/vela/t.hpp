#ifndef VELA_T_HPP
#define VELA_T_HPP

#include "vela/api.hpp"

#include <cstddef>

/// Student's t distribution: df degrees of freedom (> 0, need not be whole; infinite: the normal
/// distribution) and noncentrality (the mean of the normal numerator, finite; 0: the central
/// distribution).
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does, and bracket the
/// floating-point state once; out and x may be the same array, and n = 0 touches neither. Invalid
/// parameters give NaN.
namespace vela {

/// Density of Student's t distribution.
///
/// @param t              evaluation point; ::MissingValue is an ordinary number here
/// @param df             > 0
/// @param noncentrality  finite
/// @return density >= 0; NaN for invalid parameters and for NaN
/// @accuracy relative, densities down to 1e-280: central 2e-15 over df 0.01 to 1e8; noncentral
///           2e-12 over df 1e-3 to 1e8 and |noncentrality| up to 9e7, beyond which the result is
///           NaN
/// @see Johnson, Kotz & Balakrishnan (1995), Continuous Univariate Distributions 2, ch. 28 and 31
VELA_API double TPdf(double t, double df, double noncentrality);
/// The same for n values.
VELA_API void TPdf(double* out, const double* t, std::size_t n, double df, double noncentrality);

/// Lower or upper tail of Student's t distribution. Each tail is computed at its own precision.
///
/// @param t              evaluation point; ::MissingValue gives NaN
/// @param df             > 0
/// @param noncentrality  finite
/// @param upper          true: P(T > t); false: P(T <= t)
/// @return probability in [0, 1]; NaN for invalid parameters, for NaN, and where no digits can be
///         had: |noncentrality| above 94906265
/// @accuracy relative, of either tail down to 1e-280: central 2.1e-14, noncentral 2e-12
/// @see Johnson, Kotz & Balakrishnan (1995), Continuous Univariate Distributions 2, ch. 28 and 31
VELA_API double TCdf(double t, double df, double noncentrality, bool upper);
/// The same for n values.
VELA_API void TCdf(double* out, const double* t, std::size_t n, double df, double noncentrality,
                   bool upper);

/// Quantile of Student's t distribution: the t with P(T <= t) = p.
///
/// @param p              lower-tail probability in (0, 1); ::MissingValue gives NaN
/// @param df             > 0
/// @param noncentrality  finite
/// @return the quantile; NaN for p outside (0, 1), for invalid parameters, and where it exceeds the
///         range of a double
/// @accuracy TCdf() of the result is p to 1.3e-13 relative in the smaller tail, measured down to
///           p = 1e-280 over df 0.01 to 1e8; noncentral 1e-12
/// @see Hill (1970), Algorithm 396: Student's t-quantiles, CACM 13, for the start
VELA_API double TInvCdf(double p, double df, double noncentrality);
/// The same for n values.
VELA_API void TInvCdf(double* out, const double* p, std::size_t n, double df, double noncentrality);

}  // namespace vela

#endif
