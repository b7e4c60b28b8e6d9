#ifndef VELA_KERNELS_REGULA_FALSI_ROOT_HPP
#define VELA_KERNELS_REGULA_FALSI_ROOT_HPP

#include "kernels/real_functions.hpp"

namespace vela::kernels {

/// A root of fn in [a, b] by the Illinois variant of regula falsi (Dowell and Jarratt 1971).
///
/// @return the root; for an integer unknown the smallest integer of the bracket at which fn no
/// longer has the sign opposite to its right end. MissingValue with *status 30020 when an end point
/// evaluates to MissingValue, with 30021 when the ends do not bracket a root and neither is one, or
/// when 10,000 steps did not find it (a function that returns NaN would never end).
double regula_falsi_root(double a, double b, CmRealFunction& fn, int* status);

}  // namespace vela::kernels

#endif
