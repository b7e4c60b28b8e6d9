// Traps on x86-64 Linux with g++. A trap arrives as SIGFPE; the handler throws out of the signal
// frame, which the unwinder supports for code compiled with -fnon-call-exceptions. Other compilers
// do not have that flag: they take arithmetic for something that cannot throw, and leave a function
// without clean-up or catch block for it.

#include "conventions/fp_environment.hpp"
#include "conventions/fp_platform.hpp"

#include <ucontext.h>
#include <xmmintrin.h>
#include <csignal>

namespace vela::conventions {
namespace {

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

void install_fault_handler() {
    struct sigaction action {};
    action.sa_sigaction = handle_sigfpe;
    // SA_NODEFER: an exception leaves the handler, so nothing would unblock the signal again.
    action.sa_flags = SA_SIGINFO | SA_NODEFER;
    sigemptyset(&action.sa_mask);
    sigaction(SIGFPE, &action, &previousAction);
}

}  // namespace vela::conventions
