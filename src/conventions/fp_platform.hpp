#ifndef VELA_CONVENTIONS_FP_PLATFORM_HPP
#define VELA_CONVENTIONS_FP_PLATFORM_HPP

#include <cfenv>

/// What the library asks of a platform: access to the state of the floating-point unit, and the
/// delivery of its traps. conventions/platform/ implements each of the two more than once;
/// cmake/FloatingPointPlatform.cmake chooses.
namespace vela::conventions {

/// Faults that matter here; denormal, underflow and inexact never do.
enum FaultFlag : unsigned { kInvalidFault = 1, kDivideByZeroFault = 2, kOverflowFault = 4 };

enum class Traps {
    kMasked,
    kArmed,  ///< invalid operation, division by zero and overflow; only if has_catchable_traps()
};

/// Clears the status, rounds to nearest, masks or arms the traps.
void write_state(Traps traps);

/// The same for the library's own work, up to the next write_state() or restore_unit_state(): that
/// a result was inexact concerns no one there, and may be on record from the start.
void write_working_state(Traps traps);

/// Fixes where a value is computed: what goes into it comes before, what is made of it after. To a
/// compiler, arithmetic and changes of the state have nothing to do with each other.
void pin(double& value);

/// Sticky faults since the status was last cleared, as a set of FaultFlag.
unsigned recorded_faults();

void clear_recorded_faults();

/// The thread's whole state, status included.
std::fenv_t save_unit_state();
void restore_unit_state(const std::fenv_t& state);

/// True where a trap can be turned into a C++ exception at the faulting instruction.
bool has_catchable_traps();

/// Routes hardware faults of registered threads to fp_fault_translator(); process-wide, called
/// once.
void install_fault_handler();

}  // namespace vela::conventions

#endif
