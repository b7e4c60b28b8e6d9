#include "descriptive/modes.hpp"

#include "conventions/quiet_nan.hpp"
#include "conventions/status.hpp"
#include "descriptive/few_values.hpp"
#include "descriptive/ordered_image.hpp"
#include "descriptive/ordering.hpp"
#include "descriptive/ordering_words.hpp"
#include "vela/v1/order_statistics.hpp"

#include <algorithm>
#include <optional>

namespace vela::descriptive {
namespace {

/// The longest runs of equal values of an ascending sample, given run by run.
class ModeList {
public:
    explicit ModeList(std::span<double> modes) : m_modes(modes) {}

    /// Size of a run that counts: it repeats its value, and no run before it is longer.
    std::size_t needed() const { return std::max<std::size_t>(m_frequency, 2); }

    void add(double value, std::size_t size) {
        if (size < needed()) {
            return;
        }
        if (size > m_frequency) {
            m_frequency = size;
            m_held = 0;
        }
        if (m_held < m_modes.size()) {
            m_modes[m_held++] = value;
        }
    }

    /// After the last run.
    ModeCounts finish() {
        std::fill(m_modes.begin() + static_cast<std::ptrdiff_t>(m_held), m_modes.end(),
                  conventions::kNaN);
        return {static_cast<std::uint32_t>(m_held), static_cast<std::uint32_t>(m_frequency)};
    }

private:
    std::span<double> m_modes;
    std::size_t m_frequency = 0;
    std::size_t m_held = 0;
};

}  // namespace

ModeCounts write_modes(std::span<const double> sorted, std::span<double> modes) {
    // Without the NaN at the end == is safe, and it takes both zeros for one value.
    const auto numbersEnd = std::partition_point(
        sorted.begin(), sorted.end(), [](double value) { return !is_nan_image(image_of(value)); });
    const auto n = static_cast<std::size_t>(numbersEnd - sorted.begin());
    ModeList list(modes);
    const auto next_run = [&](std::size_t from) {
        const std::size_t needed = list.needed();
        const std::size_t places = n + 1 - std::min(needed, n + 1);  // with room for such a run
        const WordRow begins(sorted.data(), [=](double value, std::size_t i) {
            return std::uint64_t{value == sorted[i + needed - 1] ? 1U : 0U};
        });
        return for_words_while(from, places, begins,
                               [](std::uint64_t isRun) { return isRun == 0; });
    };
    std::size_t end = 0;
    for (std::size_t first = next_run(0); first + list.needed() <= n; first = next_run(end)) {
        end = first + list.needed();
        while (end < n && sorted[end] == sorted[first]) {
            ++end;
        }
        list.add(sorted[first], end - first);
    }
    return list.finish();
}

namespace {

/// The modes of a sample of few values, for which no order is needed; none, with nothing written,
/// of others.
[[gnu::noinline]] std::optional<ModeCounts> modes_of_few_values(std::span<const double> x,
                                                                std::span<double> modes) {
    FewValues values;
    if (!values.count(x.size(), images_of(x.data()))) {
        return std::nullopt;
    }
    ModeList list(modes);
    double value = conventions::kNaN;
    std::size_t size = 0;
    values.for_each([&](std::uint64_t image, std::uint64_t first, std::uint64_t end) {
        if (!is_nan_image(image)) {
            const double next = value_of(image);
            if (next != value) {  // both zeros are one value
                list.add(value, size);
                value = next;
                size = 0;
            }
            size += end - first;
        }
    });
    list.add(value, size);
    return list.finish();
}

/// The modes of data in order that are not where the modes go; none, with nothing written, of others.
std::optional<ModeCounts> modes_of_ascending(std::span<const double> x, std::span<double> modes) {
    if (share_memory(x.data(), x.size(), modes.data(), modes.size()) ||
        !is_ascending(x.size(), images_of(x.data()))) {
        return std::nullopt;
    }
    return write_modes(x, modes);
}

/// The modes of any sample; none when memory could not be allocated.
std::optional<ModeCounts> modes_of(std::span<const double> x, std::span<double> modes) {
    std::optional<ModeCounts> counts;
    if (x.size() > kSmallSample) {  // fewer are sorted as soon as they are looked at
        counts = modes_of_ascending(x, modes);
    }
    if (!counts) {
        counts = modes_of_few_values(x, modes);
    }
    if (counts) {
        return counts;
    }
    const SortedCopy sorted(x.data(), static_cast<std::uint32_t>(x.size()));
    if (sorted) {
        counts = write_modes({sorted.values(), x.size()}, modes);
    }
    return counts;
}

}  // namespace

}  // namespace vela::descriptive

namespace vela::v1 {

using descriptive::ModeCounts;

int GetMode(const double* x, unsigned int n, double* modes, unsigned int maxModes,
            unsigned int* numModes, unsigned int* modeFrequency) {
    const auto counts =
        maxModes > 0 ? descriptive::modes_of({x, n}, {modes, maxModes}) : ModeCounts{};
    if (!counts) {
        std::fill_n(modes, maxModes, conventions::kNaN);
    }
    const ModeCounts found = counts.value_or(ModeCounts{});
    *numModes = found.modes;
    *modeFrequency = found.frequency;
    return counts ? conventions::kSuccess : conventions::kOutOfMemory;
}

}  // namespace vela::v1
