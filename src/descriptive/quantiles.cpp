#include "descriptive/quantiles.hpp"

#include "conventions/status.hpp"
#include "descriptive/ordering.hpp"
#include "vela/v1/order_statistics.hpp"

namespace vela::descriptive {

namespace {

using Rule = QuantilePosition::Rule;

QuantilePosition one(std::uint32_t rank) { return {Rule::kOne, rank, rank, 0.0}; }

/// h of Hyndman and Fan, in the order of operations that the methods are defined by.
double position(double n, int method, double p) {
    if (method == kSummaryMethod) {  // the usual one, sooner than by a jump through a table
        return n * p + p;
    }
    switch (method) {
        case 3: return n * p - 0.5;
        case 5: return n * p + 0.5;
        case 7: return n * p + (1.0 - p);
        case 8: return n * p + (p + 1.0) / 3.0;
        case 9: return n * p + (p + 1.5) * 0.25;
        default: return n * p;
    }
}

bool takes_lower(int method, std::uint32_t j, double g) {
    return method == 1 ? !(g > 0.0) : g == 0.0 && j % 2 == 0;
}

}  // namespace

QuantilePosition quantile_position(std::uint32_t n, int method, double p) {
    constexpr QuantilePosition kNowhere{Rule::kNone, 0, 0, 0.0};
    if (n == 0 || p != p) {
        return kNowhere;
    }
    if (p <= 0.0) {
        return p == 0.0 ? one(1) : kNowhere;
    }
    if (p >= 1.0) {
        return p == 1.0 ? one(n) : kNowhere;
    }
    const double h = position(n, method, p);
    // Not below 0 but for method 3, where -0.5 < h truncates to 0; rounding may reach n.
    const auto whole = static_cast<std::int64_t>(h);
    if (whole >= n) {
        return one(n);
    }
    const auto j = static_cast<std::uint32_t>(whole);
    const double g = h - static_cast<double>(whole);
    if (method == 1 || method == 3) {
        return one(takes_lower(method, j, g) && j > 0 ? j : j + 1);
    }
    if (j == 0 || (method == 2 && g > 0.0)) {
        return one(j + 1);
    }
    return {method == 2 ? Rule::kMidpoint : Rule::kWeighted, j, j + 1, g};
}

QuantilePosition median_position(std::uint32_t n) {
    if (n == 0) {
        return {Rule::kNone, 0, 0, 0.0};
    }
    return n % 2 == 1 ? one(n / 2 + 1) : QuantilePosition{Rule::kMidpoint, n / 2, n / 2 + 1, 0.0};
}

std::array<QuantilePosition, 5> five_number_positions(std::uint32_t n) {
    const auto at = [n](double p) { return quantile_position(n, kSummaryMethod, p); };
    return {at(0.0), at(0.25), at(0.5), at(0.75), at(1.0)};
}

namespace {

/// Each probability is read before its quantile is written: the arrays may be the same.
template <class Sample>
void write_quantiles(const Sample& sample, std::uint32_t n, int method, double* out,
                     const double* probabilities, std::uint32_t count) {
    for (std::uint32_t i = 0; i < count; ++i) {
        out[i] = quantile_position(n, method, probabilities[i]).value_in(sample);
    }
}

}  // namespace

}  // namespace vela::descriptive

namespace vela::v1 {

using descriptive::SelectedValues;
using descriptive::SortedCopy;

int GetSampleQuantiles(const double* x, unsigned int n, int method, double* out,
                       const double* probabilities, unsigned int count) {
    if (!descriptive::is_quantile_method(method)) {
        // In this order: the method counts only once there is a sorted copy.
        return SortedCopy(x, n) ? conventions::kInvalidQuantileMethod : conventions::kOutOfMemory;
    }
    if (count > SelectedValues::kCapacity / 2) {
        const SortedCopy sorted(x, n);
        if (!sorted) {
            return conventions::kOutOfMemory;
        }
        descriptive::write_quantiles(sorted, n, method, out, probabilities, count);
        return conventions::kSuccess;
    }
    const bool isDone = descriptive::with_order_statistics(
        x, n,
        [=](auto want) {
            for (unsigned int i = 0; i < count; ++i) {
                descriptive::quantile_position(n, method, probabilities[i]).for_each_rank(want);
            }
        },
        [=](const auto& sample) {
            descriptive::write_quantiles(sample, n, method, out, probabilities, count);
        });
    return isDone ? conventions::kSuccess : conventions::kOutOfMemory;
}

}  // namespace vela::v1
