// Any platform with <cfenv>, which has no portable way to unmask a trap.

#include "conventions/fp_platform.hpp"

namespace vela::conventions {

void write_state(Traps /*always masked*/) { std::fesetenv(FE_DFL_ENV); }

void write_working_state(Traps traps) { write_state(traps); }

void pin(double& /*moved by no compiler over the calls that change the state here*/) {}

unsigned recorded_faults() {
    const int raised = std::fetestexcept(FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW);
    return ((raised & FE_INVALID) != 0 ? kInvalidFault : 0U) |
           ((raised & FE_DIVBYZERO) != 0 ? kDivideByZeroFault : 0U) |
           ((raised & FE_OVERFLOW) != 0 ? kOverflowFault : 0U);
}

void clear_recorded_faults() { std::feclearexcept(FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW); }

std::fenv_t save_unit_state() {
    std::fenv_t state{};
    std::fegetenv(&state);
    return state;
}

void restore_unit_state(const std::fenv_t& state) { std::fesetenv(&state); }

}  // namespace vela::conventions
