#include "vela/discrete.hpp"

#include "conventions/call_frame.hpp"
#include "kernels/double_double.hpp"
#include "kernels/fuzzy_compare.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace vela {
namespace distributions {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kShortfall = 1e-13;  // relative to p; a smaller one counts as reached

/// The caller's rows, in any order.
struct Table {
    const double* values;
    const double* probabilities;
    int count;

    bool is_valid() const {
        for (int i = 0; i < count; ++i) {
            const bool isProbability = std::isgreaterequal(probabilities[i], 0.0) &&
                                       std::isless(probabilities[i], kInfinity);
            if (!isProbability || !std::isless(std::fabs(values[i]), kInfinity)) {
                return false;
            }
        }
        return count >= 1;
    }

    /// The sum of the probabilities of the rows that `counts` picks by their value, compensated:
    /// a quantile compares it to 13 digits, however many rows there are.
    template <class Predicate>
    double sum_where(Predicate counts) const {
        kernels::DoubleDouble sum;
        for (int i = 0; i < count; ++i) {
            if (counts(values[i])) {
                const kernels::DoubleDouble next = kernels::two_sum(sum.hi, probabilities[i]);
                sum = {next.hi, sum.lo + next.lo};
            }
        }
        return sum.hi + sum.lo;
    }
};

bool is_same(double value, double x) {
    constexpr double large = 1e300;  // no tolerance beyond, where the difference could overflow
    return value == x || (std::fabs(value) < large && std::fabs(x) < large &&
                          kernels::fuzzy_compare(value, x, 0.0) == 0);
}

auto discrete_pdf(const double* values, const double* probabilities, int count) {
    const Table table{values, probabilities, count};
    return [=, isValid = table.is_valid()](double x) {
        if (!isValid || x != x) {
            return MissingValue;
        }
        return table.sum_where([=](double value) { return is_same(value, x); });
    };
}

auto discrete_cdf(const double* values, const double* probabilities, int count, bool upper) {
    const Table table{values, probabilities, count};
    return [=, isValid = table.is_valid()](double x) {
        if (!isValid || x != x) {
            return MissingValue;
        }
        return table.sum_where(
            [=](double value) { return (value <= x || is_same(value, x)) != upper; });
    };
}

/// Doubles as integers in the same order.
std::int64_t rank_of(double x) {
    const auto bits = std::bit_cast<std::int64_t>(x);
    return bits >= 0 ? bits : std::numeric_limits<std::int64_t>::min() - bits;
}

double with_rank(std::int64_t rank) {
    return std::bit_cast<double>(rank >= 0 ? rank
                                           : std::numeric_limits<std::int64_t>::min() - rank);
}

/// The midpoint of two doubles by rank, at or above the first and below the second.
double between(double low, double high) {
    const std::int64_t a = rank_of(low);
    const std::int64_t b = rank_of(high);
    return with_rank((a & b) + ((a ^ b) >> 1));
}

/// The values of positive probability next to x on both sides, x itself belonging to the lower one.
struct Neighbours {
    double below = -kInfinity;
    double above = kInfinity;
};

Neighbours neighbours_of(double x, const Table& table) {
    Neighbours result;
    for (int i = 0; i < table.count; ++i) {
        const double value = table.values[i];
        if (table.probabilities[i] > 0.0) {
            result.below = value <= x ? std::max(result.below, value) : result.below;
            result.above = value <= x ? result.above : std::min(result.above, value);
        }
    }
    return result;
}

/// The first value whose cumulative probability reaches p. Instead of sorting, which would need
/// memory, the range of the values is halved: at most 64 times, usually little more often than a
/// sorted table would ask for.
double quantile(double p, const Table& table) {
    const double target = p - kShortfall * p;
    double low = neighbours_of(-kInfinity, table).above;
    double high = neighbours_of(kInfinity, table).below;
    while (low < high) {
        const double middle = between(low, high);
        const double cumulative = table.sum_where([=](double value) { return value <= middle; });
        const Neighbours neighbours = neighbours_of(middle, table);
        if (cumulative >= target) {
            high = neighbours.below;
        } else {
            low = neighbours.above;
        }
    }
    return low == high ? low : MissingValue;
}

auto discrete_inv_cdf(const double* values, const double* probabilities, int count) {
    const Table table{values, probabilities, count};
    return [=, isValid = table.is_valid()](double p) {
        const bool isProbability = std::isgreaterequal(p, 0.0) && std::islessequal(p, 1.0);
        return isValid && isProbability ? quantile(p, table) : MissingValue;
    };
}

}  // namespace
}  // namespace distributions

using conventions::call_unbracketed;
using enum conventions::MissingInput;

double DiscretePdf(double x, const double* values, const double* probabilities, int count) {
    return call_unbracketed<kIsOrdinary>(distributions::discrete_pdf, x, values, probabilities,
                                         count);
}

void DiscretePdf(double* out, const double* x, std::size_t n, const double* values,
                 const double* probabilities, int count) {
    call_unbracketed<kIsOrdinary>(distributions::discrete_pdf, out, x, n, values, probabilities,
                                  count);
}

double DiscreteCdf(double x, const double* values, const double* probabilities, int count,
                   bool upper) {
    return call_unbracketed<kGivesMissing>(distributions::discrete_cdf, x, values, probabilities,
                                           count, upper);
}

void DiscreteCdf(double* out, const double* x, std::size_t n, const double* values,
                 const double* probabilities, int count, bool upper) {
    call_unbracketed<kGivesMissing>(distributions::discrete_cdf, out, x, n, values, probabilities,
                                    count, upper);
}

double DiscreteInvCdf(double p, const double* values, const double* probabilities, int count) {
    return call_unbracketed<kGivesMissing>(distributions::discrete_inv_cdf, p, values,
                                           probabilities, count);
}

void DiscreteInvCdf(double* out, const double* p, std::size_t n, const double* values,
                    const double* probabilities, int count) {
    call_unbracketed<kGivesMissing>(distributions::discrete_inv_cdf, out, p, n, values,
                                    probabilities, count);
}

}  // namespace vela
