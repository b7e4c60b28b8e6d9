#include "conventions/platform/mxcsr.hpp"

#include <emmintrin.h>
#include <cstdint>

namespace vela::conventions {
namespace {

constexpr std::uint32_t kInvalidStatus = 0x0001;
constexpr std::uint32_t kDivideByZeroStatus = 0x0004;
constexpr std::uint32_t kOverflowStatus = 0x0008;

}  // namespace

unsigned recorded_faults() {
    const std::uint32_t status = _mm_getcsr();
    return ((status & kInvalidStatus) != 0 ? kInvalidFault : 0U) |
           ((status & kDivideByZeroStatus) != 0 ? kDivideByZeroFault : 0U) |
           ((status & kOverflowStatus) != 0 ? kOverflowFault : 0U);
}

void clear_recorded_faults() {
    write_mxcsr(_mm_getcsr() & ~(kInvalidStatus | kDivideByZeroStatus | kOverflowStatus));
}

std::fenv_t save_unit_state() {
    std::fenv_t state{};
    state.__mxcsr = _mm_getcsr();
    return state;
}

void restore_unit_state(const std::fenv_t& state) { write_mxcsr(state.__mxcsr); }

}  // namespace vela::conventions
