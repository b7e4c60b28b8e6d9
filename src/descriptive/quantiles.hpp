#ifndef VELA_DESCRIPTIVE_QUANTILES_HPP
#define VELA_DESCRIPTIVE_QUANTILES_HPP

#include "conventions/quiet_nan.hpp"

#include <array>
#include <cstdint>

namespace vela::descriptive {

/// Where a quantile lies in a sorted sample, known from n and p alone; so the order statistics that
/// it needs can be asked for before anything is sorted.
struct QuantilePosition {
    enum class Rule { kNone, kOne, kMidpoint, kWeighted };

    Rule rule;
    std::uint32_t low;  ///< rank from 1; of kOne the only one
    std::uint32_t high;
    double weight;  ///< of x(high), for kWeighted

    /// Calls want(k) for every order statistic x(k) that value_in() will read.
    template <class Want>
    void for_each_rank(Want want) const {
        if (rule != Rule::kNone) {
            want(low);
        }
        if (rule == Rule::kMidpoint || rule == Rule::kWeighted) {
            want(high);
        }
    }

    /// `sample` maps a rank k to x(k).
    template <class Sample>
    double value_in(const Sample& sample) const {
        switch (rule) {
            case Rule::kOne: return sample(low);
            case Rule::kMidpoint: return (sample(low) + sample(high)) / 2.0;
            case Rule::kWeighted: return (1.0 - weight) * sample(low) + weight * sample(high);
            case Rule::kNone: break;
        }
        return conventions::kNaN;
    }
};

/// Definition 6, position (n + 1) p, is the one of every summary.
inline constexpr int kSummaryMethod = 6;

inline bool is_quantile_method(int method) { return method >= 1 && method <= 9; }

/// Position of the quantile at p by method 1..9 among n observations.
QuantilePosition quantile_position(std::uint32_t n, int method, double p);

/// The median: the middle value, or the mean of the two in the middle.
QuantilePosition median_position(std::uint32_t n);

/// Minimum, quartiles, median and maximum.
std::array<QuantilePosition, 5> five_number_positions(std::uint32_t n);

}  // namespace vela::descriptive

#endif
