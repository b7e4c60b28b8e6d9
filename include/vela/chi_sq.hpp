#ifndef VELA_CHI_SQ_HPP
#define VELA_CHI_SQ_HPP

#include "vela/api.hpp"

#include <cstddef>

/// The chi-square distribution: df degrees of freedom (> 0, need not be whole) and, for the
/// cumulative and inverse functions, the noncentrality (>= 0): the sum of the squared means of df
/// normal variables of unit variance. A noncentrality of 0 is the central distribution and takes
/// exactly its path.
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does, and bracket the
/// floating-point state once; out and x may be the same array, and n = 0 touches neither. Invalid
/// parameters give NaN.
namespace vela {

/// Density of the central chi-square distribution,
/// f(x) = (x / 2)^(df / 2 - 1) exp(-x / 2) / (2 Gamma(df / 2)) for x >= 0, 0 below.
///
/// @param x   evaluation point; ::MissingValue is an ordinary number here
/// @param df  > 0, finite
/// @return density >= 0; infinite at 0 for df < 2 and where it exceeds the range of a double; NaN
///         for an invalid df
/// @accuracy 2e-15 relative, measured on 350 points, df 1e-3 to 1e8, densities down to 1e-280
/// @see Loader (2000), Fast and accurate computation of binomial probabilities
VELA_API double ChiSqPdf(double x, double df);
/// The same for n values.
VELA_API void ChiSqPdf(double* out, const double* x, std::size_t n, double df);

/// Lower or upper tail of the chi-square distribution. Each tail is computed at its own precision.
///
/// @param x              evaluation point; up to 0 the tails are 0 and 1 whatever the parameters;
///                       ::MissingValue gives NaN
/// @param df             > 0, up to 1.8e8; 1e-20 to 2e8 with a noncentrality
/// @param noncentrality  0 to 4e6
/// @param upper          true: P(X > x); false: P(X <= x)
/// @return probability in [0, 1]; NaN for parameters outside their domain and for NaN
/// @accuracy relative: central 1e-9; noncentral, either tail down to 1e-280, df 1e-3 to 1e8, 2e-13
///           for a noncentrality up to 1e6 and 2e-12 beyond
/// @see Johnson, Kotz & Balakrishnan (1995), Continuous Univariate Distributions 2, ch. 29
VELA_API double ChiSqCdf(double x, double df, double noncentrality, bool upper);
/// The same for n values.
VELA_API void ChiSqCdf(double* out, const double* x, std::size_t n, double df, double noncentrality,
                       bool upper);

/// Quantile of the chi-square distribution: the x with P(X <= x) = p.
///
/// @param p              lower-tail probability in [0, 1); ::MissingValue gives NaN
/// @param df             as for ChiSqCdf()
/// @param noncentrality  as for ChiSqCdf()
/// @return the quantile, 0 for p = 0 and where it lies below the smallest double; NaN for p outside
///         [0, 1) and for parameters outside their domain
/// @accuracy ChiSqCdf() of a noncentral quantile is p to 1e-12 relative in the smaller tail, or as
///           near as the neighbouring doubles allow
/// @see Abdel-Aty (1954), Biometrika 41, for the start
VELA_API double ChiSqInvCdf(double p, double df, double noncentrality);
/// The same for n values.
VELA_API void ChiSqInvCdf(double* out, const double* p, std::size_t n, double df,
                          double noncentrality);

}  // namespace vela

#endif
