#include "descriptive/modes.hpp"

#include "conventions/quiet_nan.hpp"
#include "conventions/status.hpp"
#include "descriptive/ordered_image.hpp"
#include "descriptive/ordering.hpp"
#include "descriptive/ordering_words.hpp"
#include "vela/v1/order_statistics.hpp"

#include <algorithm>

namespace vela::descriptive {

ModeCounts write_modes(std::span<const double> sorted, std::span<double> modes) {
    // Without the NaN at the end == is safe, and it takes both zeros for one value.
    const auto numbersEnd = std::partition_point(
        sorted.begin(), sorted.end(), [](double value) { return !is_nan_image(image_of(value)); });
    const auto n = static_cast<std::size_t>(numbersEnd - sorted.begin());
    // Of a run that counts: it repeats its value, and no run before it is longer.
    std::size_t needed = 2;
    const auto next_run = [&](std::size_t from) {
        const WordRow begins(sorted.data(), [=](double value, std::size_t i) {
            return std::uint64_t{value == sorted[i + needed - 1] ? 1U : 0U};
        });
        return for_words_while(from, n + 1 - std::min(needed, n + 1), begins,
                               [](std::uint64_t isRun) { return isRun == 0; });
    };
    std::size_t frequency = 0;
    std::size_t held = 0;
    std::size_t end = 0;
    for (std::size_t first = next_run(0); first + needed <= n; first = next_run(end)) {
        end = first + needed;
        while (end < n && sorted[end] == sorted[first]) {
            ++end;
        }
        needed = end - first;
        if (needed > frequency) {
            frequency = needed;
            held = 0;
        }
        if (held < modes.size()) {
            modes[held++] = sorted[first];
        }
    }
    std::fill(modes.begin() + static_cast<std::ptrdiff_t>(held), modes.end(), conventions::kNaN);
    return {static_cast<std::uint32_t>(held), static_cast<std::uint32_t>(frequency)};
}

}  // namespace vela::descriptive

namespace vela::v1 {

namespace {

/// Whether x can do without a copy: in order, and not where the modes go.
bool is_ready(const double* x, std::size_t n, std::span<const double> modes) {
    return n > descriptive::kSmallSample &&
           !descriptive::share_memory(x, n, modes.data(), modes.size()) &&
           descriptive::is_ascending(n, descriptive::images_of(x));
}

}  // namespace

int GetMode(const double* x, unsigned int n, double* modes, unsigned int maxModes,
            unsigned int* numModes, unsigned int* modeFrequency) {
    descriptive::ModeCounts counts;
    int status = conventions::kSuccess;
    if (maxModes > 0) {
        if (is_ready(x, n, {modes, maxModes})) {
            counts = descriptive::write_modes({x, n}, {modes, maxModes});
        } else if (const descriptive::SortedCopy sorted(x, n); sorted) {
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
