#ifndef VELA_DISCRETE_HPP
#define VELA_DISCRETE_HPP

#include "vela/api.hpp"

#include <cstddef>

/// A distribution given as a table: values, their probabilities, number of rows. A value matches x
/// where it equals x within a relative 1e-12.
///
/// Array forms compute out[i] from x[i] for i < n as the scalar form does; out and x may be the
/// same array, and n = 0 touches neither. These functions leave the floating-point state alone and
/// compute under whatever state the caller set.
namespace vela {

/// Total probability of the rows that match x.
///
/// @param x              evaluation point; ::MissingValue is an ordinary number here
/// @param values         finite, in any order, may repeat
/// @param probabilities  of the values; finite, >= 0, taken as given whatever their sum
/// @param count          number of rows >= 1
/// @return probability in [0, 1]; NaN for an invalid table and for NaN
/// @accuracy one rounding of the exact sum
VELA_API double DiscretePdf(double x, const double* values, const double* probabilities, int count);
/// The same for n values.
VELA_API void DiscretePdf(double* out, const double* x, std::size_t n, const double* values,
                          const double* probabilities, int count);

/// Total probability of the rows up to x (matching ones included), or of the rows above x.
///
/// @param x              evaluation point; ::MissingValue gives NaN
/// @param values         finite, in any order, may repeat
/// @param probabilities  of the values; finite, >= 0, taken as given whatever their sum
/// @param count          number of rows >= 1
/// @param upper          true: P(X > x); false: P(X <= x)
/// @return probability in [0, 1]; NaN for an invalid table and for NaN
/// @accuracy one rounding of the exact sum
VELA_API double DiscreteCdf(double x, const double* values, const double* probabilities, int count,
                            bool upper);
/// The same for n values.
VELA_API void DiscreteCdf(double* out, const double* x, std::size_t n, const double* values,
                          const double* probabilities, int count, bool upper);

/// Quantile of the table: the first value of positive probability, in ascending order, whose
/// cumulative probability reaches p, where falling short by no more than 1e-13 p counts as reached.
///
/// @param p              lower-tail probability in [0, 1]; ::MissingValue gives NaN
/// @param values         finite, in any order, may repeat
/// @param probabilities  of the values; finite, >= 0, taken as given whatever their sum
/// @param count          number of rows >= 1
/// @return the quantile; for p = 0 the smallest outcome, for p = 1 as beyond the total
///         probability the largest value that has a probability;
///         NaN for p outside [0, 1] and for invalid parameters
/// @accuracy exact in the sense of the rule above; takes up to 64 passes over the table
VELA_API double DiscreteInvCdf(double p, const double* values, const double* probabilities,
                               int count);
/// The same for n values.
VELA_API void DiscreteInvCdf(double* out, const double* p, std::size_t n, const double* values,
                             const double* probabilities, int count);

}  // namespace vela

#endif
