// x86-64 Linux with g++: traps are switched in the SSE control register MXCSR, which takes a few
// nanoseconds where the C library's environment functions also save and load the x87 unit, which
// this library never uses. A trap arrives as SIGFPE; the handler throws out of the signal frame,
// which the unwinder supports for code compiled with -fnon-call-exceptions.

#include "conventions/fp_environment.hpp"
#include "conventions/fp_platform.hpp"

#include <ucontext.h>
#include <xmmintrin.h>
#include <csignal>
#include <cstdint>

namespace vela::conventions {
namespace {

constexpr std::uint32_t kDefaultMxcsr = 0x1F80;  // all six masked, round to nearest, status clear
constexpr std::uint32_t kInvalidMask = 0x0080;
constexpr std::uint32_t kDivideByZeroMask = 0x0200;
constexpr std::uint32_t kOverflowMask = 0x0400;
constexpr std::uint32_t kArmedMxcsr =
    kDefaultMxcsr & ~(kInvalidMask | kDivideByZeroMask | kOverflowMask);

constexpr std::uint32_t kInvalidStatus = 0x0001;
constexpr std::uint32_t kDivideByZeroStatus = 0x0004;
constexpr std::uint32_t kOverflowStatus = 0x0008;
constexpr std::uint32_t kAllStatus = 0x003F;

struct sigaction previousAction;

unsigned fault_code(int signalCode) {
    switch (signalCode) {
        case FPE_FLTDIV: return kFloatDivideByZero;
        case FPE_FLTINV: return kFloatInvalidOperation;
        case FPE_FLTOVF: return kFloatOverflow;
        case FPE_INTDIV: return kIntegerDivideByZero;
        default: return 0;
    }
}

/// A fault that is not ours goes to whoever handled SIGFPE before.
void pass_to_previous_handler(int signal, siginfo_t* info, void* context) {
    if ((previousAction.sa_flags & SA_SIGINFO) != 0) {
        previousAction.sa_sigaction(signal, info, context);
        return;
    }
    const bool sentByProcess = info->si_code <= 0;
    if (previousAction.sa_handler == SIG_IGN && sentByProcess) {
        return;
    }
    // The kernel does not let a process ignore a hardware fault: it ends, as by default.
    if (previousAction.sa_handler == SIG_DFL || previousAction.sa_handler == SIG_IGN) {
        std::signal(SIGFPE, SIG_DFL);
        std::raise(SIGFPE);
        return;
    }
    previousAction.sa_handler(signal);
}

void handle_sigfpe(int signal, siginfo_t* info, void* context) {
    const unsigned code = fault_code(info->si_code);
    if (code != 0 && is_thread_registered()) {
        // The kernel enters a handler with default state; the translator decides from the state at
        // the fault.
        _mm_setcsr(static_cast<ucontext_t*>(context)->uc_mcontext.fpregs->mxcsr);
        fp_fault_translator(code);
    }
    pass_to_previous_handler(signal, info, context);
}

}  // namespace

bool has_catchable_traps() { return true; }

void write_default_state() { _mm_setcsr(kDefaultMxcsr); }

void write_armed_state() { _mm_setcsr(kArmedMxcsr); }

unsigned recorded_faults() {
    const std::uint32_t status = _mm_getcsr();
    return ((status & kInvalidStatus) != 0 ? kInvalidFault : 0U) |
           ((status & kDivideByZeroStatus) != 0 ? kDivideByZeroFault : 0U) |
           ((status & kOverflowStatus) != 0 ? kOverflowFault : 0U);
}

void clear_recorded_faults() { _mm_setcsr(_mm_getcsr() & ~kAllStatus); }

std::fenv_t save_unit_state() {
    std::fenv_t state{};
    state.__mxcsr = _mm_getcsr();
    return state;
}

void restore_unit_state(const std::fenv_t& state) { _mm_setcsr(state.__mxcsr); }

void install_fault_handler() {
    struct sigaction action {};
    action.sa_sigaction = handle_sigfpe;
    // SA_NODEFER: an exception leaves the handler, so nothing would unblock the signal again.
    action.sa_flags = SA_SIGINFO | SA_NODEFER;
    sigemptyset(&action.sa_mask);
    sigaction(SIGFPE, &action, &previousAction);
}

}  // namespace vela::conventions
