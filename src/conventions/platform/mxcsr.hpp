#ifndef VELA_CONVENTIONS_PLATFORM_MXCSR_HPP
#define VELA_CONVENTIONS_PLATFORM_MXCSR_HPP

// x86-64 with any compiler: the state is the SSE control and status register MXCSR, which takes a
// few nanoseconds where the C library's environment functions also save and load the x87 unit,
// which this library never uses.

#include "conventions/fp_platform.hpp"

#include <emmintrin.h>
#include <cstdint>

namespace vela::conventions {

inline constexpr std::uint32_t kDefaultMxcsr = 0x1F80;  // all masked, to nearest, status clear
inline constexpr std::uint32_t kArmedMxcsr =
    kDefaultMxcsr & ~std::uint32_t{0x0080 | 0x0200 | 0x0400};  // invalid, by zero, overflow
inline constexpr std::uint32_t kInexactStatus = 0x0020;

/// The clobber keeps loads, stores and what depends on them on their side of the change.
inline void write_mxcsr(std::uint32_t value) {
    asm volatile("ldmxcsr %0" : : "m"(value) : "memory");
}

inline std::uint32_t mxcsr_of(Traps traps) {
    return traps == Traps::kArmed ? kArmedMxcsr : kDefaultMxcsr;
}

inline void write_state(Traps traps) { write_mxcsr(mxcsr_of(traps)); }

// To read the register while one of its flags is changing costs the processor a restart, up to 70
// ns. Therefore the flag of an inexact result, which nearly all arithmetic raises, is up from the
// start (atan and tan of the C library read the register, too), and with masked traps, whose owner
// will look for faults, this change has happened before the work begins.
inline void write_working_state(Traps traps) {
    write_mxcsr(mxcsr_of(traps) | kInexactStatus);
    if (traps == Traps::kMasked) {
        _mm_lfence();
    }
}

inline void pin(double& value) { asm volatile("" : "+x"(value)); }

}  // namespace vela::conventions

#endif
