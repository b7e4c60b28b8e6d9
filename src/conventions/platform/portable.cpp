// Any platform with <cfenv>: the traps stay masked, and faults are read from the sticky flags after
// each evaluation. For compilers that cannot throw at a faulting instruction, and other processors.

#include "conventions/fp_platform.hpp"

namespace vela::conventions {

bool has_catchable_traps() { return false; }

void write_default_state() { std::fesetenv(FE_DFL_ENV); }

void write_armed_state() { write_default_state(); }

unsigned recorded_faults() {
    const int raised = std::fetestexcept(FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW);
    return ((raised & FE_INVALID) != 0 ? kInvalidFault : 0U) |
           ((raised & FE_DIVBYZERO) != 0 ? kDivideByZeroFault : 0U) |
           ((raised & FE_OVERFLOW) != 0 ? kOverflowFault : 0U);
}

void clear_recorded_faults() { std::feclearexcept(FE_ALL_EXCEPT); }

std::fenv_t save_unit_state() {
    std::fenv_t state{};
    std::fegetenv(&state);
    return state;
}

void restore_unit_state(const std::fenv_t& state) { std::fesetenv(&state); }

void install_fault_handler() {}

}  // namespace vela::conventions
