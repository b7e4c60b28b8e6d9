#include "conventions/fp_environment.hpp"

#include "conventions/fault.hpp"
#include "vela/floating_point.hpp"

#include <mutex>
#include <stdexcept>

namespace vela {
namespace {

using conventions::threadState;
using conventions::Traps;

std::once_flag handlerInstalled;

Traps catchable_traps() {
    return conventions::has_catchable_traps() ? Traps::kArmed : Traps::kMasked;
}

void switch_to(Traps traps) {
    conventions::write_state(traps);
    threadState.trapsArmed = traps == Traps::kArmed;
}

}  // namespace

int RegisterKroSigfpeHandler() {
    std::call_once(handlerInstalled, conventions::install_fault_handler);
    threadState.isRegistered = true;
    threadState.bracketTraps = catchable_traps();
    switch_to(Traps::kMasked);
    return 0;
}

void SetKroFpuStates() { switch_to(catchable_traps()); }

void ResetFpuStates() { switch_to(Traps::kMasked); }

namespace conventions {

constinit thread_local ThreadState threadState;

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
            throw Fault<std::runtime_error>("Float exception: divide by zero.");
        case kFloatInvalidOperation:
            SetKroFpuStates();
            throw Fault<std::invalid_argument>("Float exception: invalid_argument.");
        case kFloatOverflow:
            SetKroFpuStates();
            throw Fault<std::overflow_error>("Float exception: overflow.");
        case kMultipleFloatFaults:
        case kMultipleFloatTraps:
            SetKroFpuStates();
            throw Fault<std::runtime_error>(
                "Runtime exception: multiple floating point faults/traps.");
        case kIntegerDivideByZero:
            throw Fault<std::runtime_error>("Runtime exception: integer division by zero.");
        default: return;
    }
}

bool take_fault() {
    const unsigned faults = recorded_faults();
    if (faults == 0) {
        return false;
    }
    clear_recorded_faults();
    if (threadState.isRegistered) {
        fp_fault_translator(fault_code(faults));
    }
    return true;
}

void raise_invalid_operation() {
    volatile double zero = 0.0;
    volatile double undefined = zero / zero;
    static_cast<void>(undefined);
}

QuietArithmetic::QuietArithmetic()
    : m_callerState(save_unit_state()), m_callerWasArmed(threadState.trapsArmed) {
    write_working_state(Traps::kMasked);
    threadState.trapsArmed = false;
}

QuietArithmetic::~QuietArithmetic() {
    restore_unit_state(m_callerState);
    threadState.trapsArmed = m_callerWasArmed;
}

}  // namespace conventions
}  // namespace vela
