#ifndef VELA_UNIFORM_HPP
#define VELA_UNIFORM_HPP

#include "vela/api.hpp"

#include <cstddef>

/// The uniform distribution on [minimum, maximum]: minimum < maximum, both finite and in the unit
/// of x.
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does; out and x may be the
/// same array, and n = 0 touches neither. Unlike the other families, none of these functions
/// touches the floating-point state: they compute under the one that the caller left.
namespace vela {

/// Density of the uniform distribution: 1 / (maximum - minimum) from the minimum to the maximum,
/// both included, 0 elsewhere.
///
/// @param x        evaluation point; ::MissingValue is an ordinary number here
/// @param minimum  finite
/// @param maximum  > minimum
/// @return density >= 0; NaN for invalid parameters and NaN
/// @accuracy 1e-15 relative
VELA_API double UniformPdf(double x, double minimum, double maximum);
/// The same for n values.
VELA_API void UniformPdf(double* out, const double* x, std::size_t n, double minimum,
                         double maximum);

/// Lower or upper tail of the uniform distribution: (x - minimum) / (maximum - minimum) and
/// (maximum - x) / (maximum - minimum) between the two.
///
/// @param x        evaluation point; ::MissingValue is an ordinary number here
/// @param minimum  finite
/// @param maximum  > minimum
/// @param upper    true: P(X > x); false: P(X <= x)
/// @return probability in [0, 1]; the comparison with the minimum comes first, so that x = minimum
///         = maximum gives 0 (lower tail) and 1 (upper tail). NaN for NaN and for a NaN minimum;
///         other invalid parameters give what the comparisons give
/// @accuracy 1e-15 relative, given the difference to the end point
/// @see Johnson, Kotz & Balakrishnan (1995), Continuous Univariate Distributions 2, ch. 26
VELA_API double UniformCdf(double x, double minimum, double maximum, bool upper);
/// The same for n values.
VELA_API void UniformCdf(double* out, const double* x, std::size_t n, double minimum,
                         double maximum, bool upper);

/// Quantile of the uniform distribution, (maximum - minimum) p + minimum.
///
/// @param p        lower-tail probability; ::MissingValue is an ordinary number here
/// @param minimum  finite
/// @param maximum  > minimum
/// @return the quantile: exactly the minimum for p = 0 and the maximum for p = 1; a p outside [0,
///         1] extrapolates. Invalid parameters give what the formula gives
/// @accuracy 1e-16 of the larger end point
VELA_API double UniformInvCdf(double p, double minimum, double maximum);
/// The same for n values.
VELA_API void UniformInvCdf(double* out, const double* p, std::size_t n, double minimum,
                            double maximum);

}  // namespace vela

#endif
