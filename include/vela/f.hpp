#ifndef VELA_F_HPP
#define VELA_F_HPP

#include "vela/api.hpp"

#include <cstddef>

/// The F distribution: df1 degrees of freedom of the numerator and df2 of the denominator (> 0,
/// need not be whole; an infinite df2 gives a chi-square variable over df1) and, for the cumulative
/// and inverse functions, the noncentrality of the numerator (>= 0, as in ChiSqCdf()). A
/// noncentrality of 0 is the central distribution and takes exactly its path.
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does, and bracket the
/// floating-point state once; out and x may be the same array, and n = 0 touches neither. Invalid
/// parameters give NaN.
namespace vela {

/// Density of the central F distribution: with r = df1 x / df2,
/// f(x) = r^(df1 / 2) (1 + r)^(-(df1 + df2) / 2) / (x B(df1 / 2, df2 / 2)) for x >= 0, 0 below.
///
/// @param x    evaluation point; ::MissingValue is an ordinary number here
/// @param df1  > 0
/// @param df2  > 0
/// @return density >= 0; infinite at 0 for df1 < 2; NaN for invalid parameters
/// @accuracy 3e-15 relative, measured on 1500 points, df1 and df2 1e-3 to 1e5, x 1e-130 to 1e130;
///           7e-14 beyond
/// @see Loader (2000), Fast and accurate computation of binomial probabilities
VELA_API double FPdf(double x, double df1, double df2);
/// The same for n values.
VELA_API void FPdf(double* out, const double* x, std::size_t n, double df1, double df2);

/// Lower or upper tail of the F distribution. Each tail is computed at its own precision.
///
/// @param x              evaluation point; up to 0 the tails are 0 and 1; ::MissingValue gives NaN
/// @param df1            > 0; 1e-20 to 2e8 with a noncentrality
/// @param df2            > 0; from 1e-20 with a noncentrality
/// @param noncentrality  0 to 4e6
/// @param upper          true: P(F > x); false: P(F <= x)
/// @return probability in [0, 1]; NaN for parameters outside their domain and for NaN
/// @accuracy relative, either tail down to 1e-280: central 1.5e-14;
///           noncentral 2e-13, df1 and df2 1e-3 to 1e8, noncentrality up to 1e4
/// @see Johnson, Kotz & Balakrishnan (1995), Continuous Univariate Distributions 2, ch. 27 and 30
VELA_API double FCdf(double x, double df1, double df2, double noncentrality, bool upper);
/// The same for n values.
VELA_API void FCdf(double* out, const double* x, std::size_t n, double df1, double df2,
                   double noncentrality, bool upper);

/// Quantile of the F distribution: the x with P(F <= x) = p.
///
/// @param p              lower-tail probability in [0, 1); ::MissingValue gives NaN
/// @param df1            as for FCdf()
/// @param df2            as for FCdf()
/// @param noncentrality  as for FCdf()
/// @return the quantile, 0 for p = 0 and where it lies below the smallest double; NaN for p outside
///         [0, 1), for parameters outside their domain, and where it exceeds the range of a double
/// @accuracy FCdf() of a noncentral quantile is p to 1e-12 relative in the smaller tail, or as near
///           as the neighbouring doubles allow
/// @see Paulson (1942), Annals of Mathematical Statistics 13, for the start
VELA_API double FInvCdf(double p, double df1, double df2, double noncentrality);
/// The same for n values.
VELA_API void FInvCdf(double* out, const double* p, std::size_t n, double df1, double df2,
                      double noncentrality);

}  // namespace vela

#endif
