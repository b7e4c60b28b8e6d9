#ifndef VELA_DESCRIPTIVE_KAHAN_HPP
#define VELA_DESCRIPTIVE_KAHAN_HPP

#include "kernels/pair.hpp"

namespace vela::descriptive {

using kernels::Pair;

/// Compensated accumulator of doubles or pairs. The value read back is the sum alone: the
/// compensation is never folded in at the end.
///
/// The four operations of a step depend on one another and on those of the step before, so a sum
/// costs their latency; accumulators that have no result in common fill each other's gaps.
template <class Value>
class Kahan {
public:
    Kahan() = default;
    explicit Kahan(Value start) : m_sum(start) {}

    void add(Value term) {
        const Value corrected = m_compensation + term;
        const Value sum = m_sum + corrected;
        m_compensation = corrected - (sum - m_sum);
        m_sum = sum;
    }

    Value value() const { return m_sum; }

private:
    Value m_sum{};
    Value m_compensation{};
};

using KahanSum = Kahan<double>;
using KahanPair = Kahan<Pair>;

}  // namespace vela::descriptive

#endif
