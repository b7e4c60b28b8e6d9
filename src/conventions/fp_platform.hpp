#ifndef VELA_CONVENTIONS_FP_PLATFORM_HPP
#define VELA_CONVENTIONS_FP_PLATFORM_HPP

#include <cfenv>

/// What the library asks of a platform's floating-point unit. One source file in
/// conventions/platform/ implements it, chosen in cmake/FloatingPointPlatform.cmake.
namespace vela::conventions {

/// Faults that matter here; denormal, underflow and inexact never do.
enum FaultFlag : unsigned { kInvalidFault = 1, kDivideByZeroFault = 2, kOverflowFault = 4 };

/// True where a trap can be turned into a C++ exception at the faulting instruction. Where it is
/// false, write_armed_state() leaves the traps masked.
bool has_catchable_traps();

/// Clears the status, rounds to nearest, masks every trap.
void write_default_state();

/// Clears the status, rounds to nearest, unmasks invalid operation, division by zero and overflow.
void write_armed_state();

/// Sticky faults since the status was last cleared, as a set of FaultFlag.
unsigned recorded_faults();

void clear_recorded_faults();

/// The thread's whole state, status included.
std::fenv_t save_unit_state();
void restore_unit_state(const std::fenv_t& state);

/// Routes hardware faults of registered threads to fp_fault_translator(); process-wide, called
/// once.
void install_fault_handler();

}  // namespace vela::conventions

#endif
