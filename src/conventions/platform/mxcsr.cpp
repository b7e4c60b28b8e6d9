// x86-64 with any compiler: the state is the SSE control and status register MXCSR, which takes a
// few nanoseconds where the C library's environment functions also save and load the x87 unit,
// which this library never uses.

#include "conventions/fp_platform.hpp"

#include <emmintrin.h>
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
constexpr std::uint32_t kInexactStatus = 0x0020;

std::uint32_t mxcsr_of(Traps traps) { return traps == Traps::kArmed ? kArmedMxcsr : kDefaultMxcsr; }

}  // namespace

void write_state(Traps traps) { _mm_setcsr(mxcsr_of(traps)); }

// To read the register while one of its flags is changing costs the processor a restart, up to 70
// ns. Therefore the flag of an inexact result, which nearly all arithmetic raises, is up from the
// start (atan and tan of the C library read the register, too), and with masked traps, whose owner
// will look for faults, this change has happened before the work begins.
void write_working_state(Traps traps) {
    _mm_setcsr(mxcsr_of(traps) | kInexactStatus);
    if (traps == Traps::kMasked) {
        _mm_lfence();
    }
}

unsigned recorded_faults() {
    const std::uint32_t status = _mm_getcsr();
    return ((status & kInvalidStatus) != 0 ? kInvalidFault : 0U) |
           ((status & kDivideByZeroStatus) != 0 ? kDivideByZeroFault : 0U) |
           ((status & kOverflowStatus) != 0 ? kOverflowFault : 0U);
}

void clear_recorded_faults() {
    _mm_setcsr(_mm_getcsr() & ~(kInvalidStatus | kDivideByZeroStatus | kOverflowStatus));
}

std::fenv_t save_unit_state() {
    std::fenv_t state{};
    state.__mxcsr = _mm_getcsr();
    return state;
}

void restore_unit_state(const std::fenv_t& state) { _mm_setcsr(state.__mxcsr); }

}  // namespace vela::conventions
