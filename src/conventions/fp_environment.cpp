#include "conventions/fp_environment.hpp"

#include "vela/floating_point.hpp"

#include <mutex>

namespace vela {
namespace {

constinit thread_local bool threadRegistered = false;
std::once_flag handlerInstalled;

}  // namespace

int RegisterKroSigfpeHandler() {
    std::call_once(handlerInstalled, conventions::install_fault_handler);
    threadRegistered = true;
    conventions::write_default_state();
    return 0;
}

void SetKroFpuStates() { conventions::write_armed_state(); }

void ResetFpuStates() { conventions::write_default_state(); }

namespace conventions {
namespace {

unsigned fault_code(unsigned faults) {
    switch (faults) {
        case kInvalidFault: return kFloatInvalidOperation;
        case kDivideByZeroFault: return kFloatDivideByZero;
        case kOverflowFault: return kFloatOverflow;
        default: return kMultipleFloatFaults;
    }
}

}  // namespace

void fp_fault_translator(unsigned code) {
    switch (code) {
        case kFloatDivideByZero:
            SetKroFpuStates();
            throw std::runtime_error("Float exception: divide by zero.");
        case kFloatInvalidOperation:
            SetKroFpuStates();
            throw std::invalid_argument("Float exception: invalid_argument.");
        case kFloatOverflow:
            SetKroFpuStates();
            throw std::overflow_error("Float exception: overflow.");
        case kMultipleFloatFaults:
        case kMultipleFloatTraps:
            SetKroFpuStates();
            throw std::runtime_error("Runtime exception: multiple floating point faults/traps.");
        case kIntegerDivideByZero:
            throw std::runtime_error("Runtime exception: integer division by zero.");
        default: return;
    }
}

bool is_thread_registered() { return threadRegistered; }

bool enter_bracket() {
    if (threadRegistered && has_catchable_traps()) {
        write_armed_state();
        return true;
    }
    write_default_state();
    return false;
}

void leave_bracket() { write_default_state(); }

bool take_fault() {
    const unsigned faults = recorded_faults();
    if (faults == 0) {
        return false;
    }
    clear_recorded_faults();
    if (threadRegistered) {
        fp_fault_translator(fault_code(faults));
    }
    return true;
}

void raise_invalid_operation() {
    volatile double zero = 0.0;
    volatile double undefined = zero / zero;
    static_cast<void>(undefined);
}

}  // namespace conventions
}  // namespace vela
