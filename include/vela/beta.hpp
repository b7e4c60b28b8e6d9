#ifndef VELA_BETA_HPP
#define VELA_BETA_HPP

#include "vela/api.hpp"

#include <cstddef>

/// The beta distribution: first and second shape (1e-150 to 1e150, dimensionless), support [0, 1],
/// mean first / (first + second).
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does, and bracket the
/// floating-point state once; out and x may be the same array, and n = 0 touches neither. Work on
/// the shapes is done once per array. Invalid shapes give NaN.
namespace vela {

/// Density of the beta distribution, f(x) = x^(first - 1) (1 - x)^(second - 1) / B(first, second)
/// on [0, 1], 0 outside; at 0 and 1 its limit, which is infinite where that end's shape is below 1.
///
/// @param x       evaluation point; ::MissingValue is an ordinary number here
/// @param first   > 0
/// @param second  > 0
/// @return density >= 0; +infinity at an end where it has a pole and where it exceeds the range of
///         doubles; NaN for invalid shapes and for NaN
/// @accuracy 3e-15 relative over shapes 1e-3 to 1e6 and densities down to 1e-280
/// @see Loader (2000), Fast and accurate computation of binomial probabilities
VELA_API double BetaPdf(double x, double first, double second);
/// The same for n values.
VELA_API void BetaPdf(double* out, const double* x, std::size_t n, double first, double second);

/// Lower or upper tail of the beta distribution, the regularized incomplete beta function. Each
/// tail is computed at its own precision; one below 2e-288 is 0.
///
/// @param x       evaluation point; ::MissingValue gives NaN
/// @param first   > 0
/// @param second  > 0
/// @param upper   true: P(X > x); false: P(X <= x)
/// @return probability in [0, 1]; NaN for invalid shapes and for NaN
/// @accuracy relative, either tail: 1.5e-14 over shapes 1e-3 to 1e6 and tails down to 2e-288,
///           1.5e-15 where both shapes exceed 60
/// @see Didonato & Morris (1992), Algorithm 708, ACM TOMS 18
VELA_API double BetaCdf(double x, double first, double second, bool upper);
/// The same for n values.
VELA_API void BetaCdf(double* out, const double* x, std::size_t n, double first, double second,
                      bool upper);

/// Quantile of the beta distribution: the x with P(X <= x) = p.
///
/// @param p       lower-tail probability in [0, 1]; ::MissingValue gives NaN
/// @param first   > 0
/// @param second  > 0
/// @return the quantile, 0 for p = 0 and 1 for p = 1; NaN for p outside [0, 1] and for
///         invalid shapes
/// @accuracy BetaCdf() of the result is p to 6e-14 relative in the smaller tail, or to what half an
///           ulp of x means to it; 8e-15 for p from 1e-10 on. Measured over shapes 1e-3 to 1e6 and
///           p down to 1e-280; next to the denormal numbers NaN. A p next to 1 has lost the digits
///           of 1 - p before the call.
VELA_API double BetaInvCdf(double p, double first, double second);
/// The same for n values.
VELA_API void BetaInvCdf(double* out, const double* p, std::size_t n, double first, double second);

}  // namespace vela

#endif
