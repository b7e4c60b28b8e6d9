// For compilers that cannot throw at a faulting instruction, and for other processors: the traps
// stay masked, and faults are read from the sticky flags after each evaluation.

#include "conventions/fp_platform.hpp"

namespace vela::conventions {

bool has_catchable_traps() { return false; }

void install_fault_handler() {}

}  // namespace vela::conventions
