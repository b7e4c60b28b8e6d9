#ifndef VELA_LAMBDA_HPP
#define VELA_LAMBDA_HPP

#include "vela/api.hpp"

#include <cstddef>

/// Tukey's lambda distribution, given by its quantile: lambda (finite; 0 is the logistic
/// distribution, 0.14 nearly a normal one, 1 and 2 uniform ones), location (finite, unit of x; the
/// median) and scale (> 0, unit of x). For lambda > 0 the support ends at location -/+ scale /
/// lambda.
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does, and bracket the
/// floating-point state once; out and x may be the same array, and n = 0 touches neither. Invalid
/// parameters give NaN.
namespace vela {

/// Density of Tukey's lambda distribution: 1 / (scale (p^(lambda - 1) + (1 - p)^(lambda - 1))) at
/// the quantile of p; 0 at and beyond the ends of the support.
///
/// @param x         evaluation point; ::MissingValue is an ordinary number here
/// @param lambda    finite
/// @param location  finite, unit of x
/// @param scale     > 0, unit of x
/// @return density >= 0; 0 where it exceeds the range of a double; NaN for invalid parameters and
///         NaN
/// @accuracy 1e-13 relative over lambda -4 to 4, densities down to 1e-280
VELA_API double LambdaPdf(double x, double lambda, double location, double scale);
/// The same for n values.
VELA_API void LambdaPdf(double* out, const double* x, std::size_t n, double lambda, double location,
                        double scale);

/// Lower or upper tail of Tukey's lambda distribution: the quantile solved for p, each tail at its
/// own precision.
///
/// @param x         evaluation point; ::MissingValue gives NaN
/// @param lambda    finite
/// @param location  finite, unit of x
/// @param scale     > 0, unit of x
/// @param upper     true: P(X > x); false: P(X <= x)
/// @return probability in [0, 1]; NaN for invalid parameters and NaN
/// @accuracy 1e-13 relative in both tails over lambda -4 to 4, measured down to 1e-280
/// @see Joiner & Rosenblatt (1971), Some properties of the range in samples from Tukey's symmetric
///      lambda distributions, JASA 66
VELA_API double LambdaCdf(double x, double lambda, double location, double scale, bool upper);
/// The same for n values.
VELA_API void LambdaCdf(double* out, const double* x, std::size_t n, double lambda, double location,
                        double scale, bool upper);

/// Quantile of Tukey's lambda distribution, location + scale (p^lambda - (1 - p)^lambda) / lambda;
/// for lambda = 0 location + scale ln(p / (1 - p)).
///
/// @param p         lower-tail probability in [0, 1]; ::MissingValue gives NaN
/// @param lambda    finite
/// @param location  finite, unit of x
/// @param scale     > 0, unit of x
/// @return the quantile; NaN for p outside [0, 1], for p = 0 and p = 1 unless lambda > 0, for
///         invalid parameters, and where it exceeds the range of a double
/// @accuracy 3e-14 relative in (x - location) / scale over lambda -4 to 4, measured down to p =
///           1e-280
VELA_API double LambdaInvCdf(double p, double lambda, double location, double scale);
/// The same for n values.
VELA_API void LambdaInvCdf(double* out, const double* p, std::size_t n, double lambda,
                           double location, double scale);

}  // namespace vela

#endif
