#ifndef VELA_CONVENTIONS_FP_ENVIRONMENT_HPP
#define VELA_CONVENTIONS_FP_ENVIRONMENT_HPP

#include "conventions/fp_platform.hpp"

#include <stdexcept>

#ifdef VELA_FP_MXCSR
#include "conventions/platform/mxcsr.hpp"  // in line, for the sake of the bracket
#endif

namespace vela::conventions {

/// Platform-neutral codes of the faults that fp_fault_translator() knows.
enum FaultCode : unsigned {
    kFloatDivideByZero = 0xC000008E,
    kFloatInvalidOperation = 0xC0000090,
    kFloatOverflow = 0xC0000091,
    kIntegerDivideByZero = 0xC0000094,
    kMultipleFloatFaults = 0xC00002B4,
    kMultipleFloatTraps = 0xC00002B5
};

/// Throws the exception that stands for a fault; returns for a code that it does not know.
/// Floating-point faults re-arm the traps first, because the fault left the unit in need of a
/// reset; the integer fault leaves the floating-point state as it is.
void fp_fault_translator(unsigned code);

/// What is known of the thread.
struct ThreadState {
    bool isRegistered = false;            ///< it called RegisterKroSigfpeHandler()
    bool trapsArmed = false;              ///< by this library, and not switched off since
    Traps bracketTraps = Traps::kMasked;  ///< inside a bracket
};
extern constinit thread_local ThreadState threadState;

inline bool is_thread_registered() { return threadState.isRegistered; }

/// Entry half of the bracket around an exported computation: status cleared, round to nearest, and
/// the traps armed where a fault can come back as an exception (a registered thread on a platform
/// with catchable traps). Returns whether they are armed; where they are not, the bracket's owner
/// asks take_fault() after each result.
inline bool enter_bracket() {
    const Traps traps = threadState.bracketTraps;
    threadState.trapsArmed = traps == Traps::kArmed;
    write_working_state(traps);
    return traps == Traps::kArmed;
}

/// Exit half: status cleared, the process default restored. An exception that leaves the bracketed
/// function skips it.
inline void leave_bracket() {
    threadState.trapsArmed = false;
    write_state(Traps::kMasked);
}

/// Whether a fault would have thrown on this thread, so that there is none to look for.
inline bool are_traps_armed() { return threadState.trapsArmed; }

/// What an armed trap would have done about the result just computed under masked traps. If a
/// fault is on record, the record is cleared and, on a registered thread, the fault's exception is
/// thrown; otherwise the result is true, and the computed value stands for nothing.
bool take_fault();

/// Raises the invalid-operation fault: a trap where traps are armed, a record elsewhere. For
/// arguments whose rejection must not depend on how a compiler orders a comparison with NaN.
void raise_invalid_operation();

/// compute(), or `fallback` where it overflows or divides by zero: thrown by a guarded function,
/// trapped by the hardware, or on record because the traps are masked. Invalid operations are not
/// caught. Every routine that turns an overflow into a defined result does so through this.
template <class Compute>
double value_unless_overflow(double fallback, Compute compute) {
    try {
        double value = compute();
        pin(value);
        if (are_traps_armed() || (recorded_faults() & (kDivideByZeroFault | kOverflowFault)) == 0) {
            return value;
        }
    } catch (const std::runtime_error&) {
    }
    clear_recorded_faults();  // of the fault itself, and of one on the way to the throw
    return fallback;
}

/// Masked traps and a clear status for the lifetime of the object; the caller's state, status
/// included, comes back afterwards. For functions that promise not to throw whatever state the
/// host left, and whose infinite and NaN results are defined.
class QuietArithmetic {
public:
    QuietArithmetic();
    ~QuietArithmetic();
    QuietArithmetic(const QuietArithmetic&) = delete;
    QuietArithmetic& operator=(const QuietArithmetic&) = delete;

private:
    std::fenv_t m_callerState;
    bool m_callerWasArmed;
};

}  // namespace vela::conventions

#endif
