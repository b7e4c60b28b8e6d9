#ifndef VELA_TESTS_SUPPORT_FLOATING_POINT_STATE_HPP
#define VELA_TESTS_SUPPORT_FLOATING_POINT_STATE_HPP

#include <cfenv>

#if defined(__x86_64__)
#include <xmmintrin.h>
#endif

namespace vela::test {

/// Whether any trap of this thread is unmasked.
inline bool traps_are_armed() {
#if defined(__x86_64__)
    return (_mm_getcsr() & 0x1F80) != 0x1F80;
#else
    return false;
#endif
}

/// The process default: every trap masked, no fault on record, round to nearest.
inline bool is_default_state() {
    return !traps_are_armed() && std::fegetround() == FE_TONEAREST &&
           std::fetestexcept(FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW) == 0;
}

}  // namespace vela::test

#endif
