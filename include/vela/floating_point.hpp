#ifndef VELA_FLOATING_POINT_HPP
#define VELA_FLOATING_POINT_HPP

#include "vela/api.hpp"

namespace vela {

/// Lets floating-point faults of library calls on this thread arrive as C++ exceptions.
///
/// Every distribution, P-value and critical-value function brackets its computation: it clears the
/// floating-point status, rounds to nearest and, on a registered thread, unmasks the traps for
/// invalid operation, division by zero and overflow; afterwards the process default is restored.
/// A fault that the computation does not handle itself then leaves the call as
///
/// - division by zero: std::runtime_error "Float exception: divide by zero."
/// - invalid operation: std::invalid_argument "Float exception: invalid_argument."
/// - overflow: std::overflow_error "Float exception: overflow."
/// - several at once: std::runtime_error
///   "Runtime exception: multiple floating point faults/traps."
/// - integer division by zero: std::runtime_error
///   "Runtime exception: integer division by zero."
///
/// On a thread that is not registered the same calls compute with masked traps, and such a fault
/// makes the result NaN instead.
///
/// Call it once on each thread that wants the exceptions; later calls change nothing but the
/// floating-point state, which is reset to the process default (traps off).
///
/// @return 0, always
VELA_API int RegisterKroSigfpeHandler();

/// Clears the floating-point status, rounds to nearest, and unmasks the traps for invalid
/// operation, division by zero and overflow; denormal, underflow and inexact stay masked.
///
/// From then on the caller's own arithmetic traps: on a registered thread as the exceptions of
/// RegisterKroSigfpeHandler(), elsewhere as the platform's default, which ends the process. On a
/// platform without catchable traps (see docs/architecture.md) they stay masked.
VELA_API void SetKroFpuStates();

/// Clears the floating-point status and restores the process default: every trap masked, round to
/// nearest.
VELA_API void ResetFpuStates();

}  // namespace vela

#endif
