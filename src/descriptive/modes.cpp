#include "descriptive/modes.hpp"

#include "conventions/quiet_nan.hpp"
#include "conventions/status.hpp"
#include "descriptive/ordered_image.hpp"
#include "descriptive/ordering.hpp"
#include "vela/v1/order_statistics.hpp"

#include <algorithm>

namespace vela::descriptive {

ModeCounts write_modes(std::span<const double> sorted, std::span<double> modes) {
    // Without the NaN at the end == is safe, and it takes both zeros for one value.
    const auto numbersEnd = std::partition_point(
        sorted.begin(), sorted.end(), [](double value) { return !is_nan_image(image_of(value)); });
    const auto n = static_cast<std::size_t>(numbersEnd - sorted.begin());
    std::size_t frequency = 1;  // a value that does not repeat is no mode
    std::size_t held = 0;
    for (std::size_t first = 0, end = 1; first < n; first = end++) {
        while (end < n && sorted[end] == sorted[first]) {
            ++end;
        }
        const std::size_t size = end - first;
        if (size > frequency) {
            frequency = size;
            held = 0;
        }
        if (size == frequency && size > 1 && held < modes.size()) {
            modes[held++] = sorted[first];
        }
    }
    std::fill(modes.begin() + static_cast<std::ptrdiff_t>(held), modes.end(), conventions::kNaN);
    return {static_cast<std::uint32_t>(held),
            static_cast<std::uint32_t>(frequency > 1 ? frequency : 0)};
}

}  // namespace vela::descriptive

namespace vela::v1 {

int GetMode(const double* x, unsigned int n, double* modes, unsigned int maxModes,
            unsigned int* numModes, unsigned int* modeFrequency) {
    descriptive::ModeCounts counts;
    int status = conventions::kSuccess;
    if (maxModes > 0) {
        if (const descriptive::SortedCopy sorted(x, n); sorted) {
            counts = descriptive::write_modes({sorted.values(), n}, {modes, maxModes});
        } else {
            std::fill_n(modes, maxModes, conventions::kNaN);
            status = conventions::kOutOfMemory;
        }
    }
    *numModes = counts.modes;
    *modeFrequency = counts.frequency;
    return status;
}

}  // namespace vela::v1
