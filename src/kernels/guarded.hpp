#ifndef VELA_KERNELS_GUARDED_HPP
#define VELA_KERNELS_GUARDED_HPP

/// Elementary functions that answer a domain error or an overflow with a standard exception instead
/// of a floating-point fault. A routine that expects one catches it and returns its own defined
/// value; any other leaves the exported function.
namespace vela::kernels {

/// The largest double below ln(DBL_MAX), computed when the library is loaded.
extern const double exp_overflow_bound;

/// @throws std::runtime_error "float overflow"
[[noreturn]] void throw_float_overflow();

/// @throws std::invalid_argument "sqrt of a negative argument" unless x >= 0
double safe_sqrt(double x);

/// exp(x), and 0 below -exp_overflow_bound.
/// @throws std::runtime_error "float overflow" above exp_overflow_bound
double safe_exp(double x);

/// @throws std::runtime_error "float overflow" for 0
/// @throws std::invalid_argument "log of a negative argument" for x < 0 or NaN
double safe_log(double x);

/// x to the power y; 0 where the result underflows. For x < 0 a y within fuzzy_compare() of an
/// integer counts as that integer.
/// @throws std::runtime_error "float overflow"
/// @throws std::invalid_argument "negative number raised to a noninteger power", "zero raised to a
///         negative power"
double safe_pow(double x, double y);

}  // namespace vela::kernels

#endif
