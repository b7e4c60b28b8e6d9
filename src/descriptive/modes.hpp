#ifndef VELA_DESCRIPTIVE_MODES_HPP
#define VELA_DESCRIPTIVE_MODES_HPP

#include <cstdint>
#include <span>

namespace vela::descriptive {

struct ModeCounts {
    std::uint32_t modes = 0;
    std::uint32_t frequency = 0;  ///< of each mode; 0 when no value repeats
};

/// The most frequent values of an ascending sample, the smallest first, to `modes`; NaN to the
/// slots left over.
ModeCounts write_modes(std::span<const double> sorted, std::span<double> modes);

}  // namespace vela::descriptive

#endif
