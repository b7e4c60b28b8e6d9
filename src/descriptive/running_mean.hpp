#ifndef VELA_DESCRIPTIVE_RUNNING_MEAN_HPP
#define VELA_DESCRIPTIVE_RUNNING_MEAN_HPP

#include "descriptive/kahan.hpp"

#include <bit>
#include <cstdint>

namespace vela::descriptive {

/// Compensated running mean, for loops in which several chains of operations run side by side.
class RunningMean {
public:
    explicit RunningMean(double first) : m_mean(first) {}

    double value() const { return m_mean.value(); }

    /// Takes in the value at `deviation` from the mean so far; `count` divides by the number of
    /// values with it. Returns how far the mean moves, before any rounding into it.
    template <class Divisor>
    double add(double deviation, const Divisor& count) {
        const double move = count.quotient(deviation);
        m_mean.add(move);
        return move;
    }

private:
    KahanSum m_mean;
};

/// The same to the last bit for a loop with little else to do, where the wait for each mean
/// decides: a deviation needs the mean before it, and that a quotient, a corrected term and a sum
/// in turn.
///
/// The next mean is guessed from an estimate of the quotient, and the exact one only confirms the
/// guess, in a branch that the processor predicts: the next value starts before the confirmation
/// is there. The guess fails where the last bit of the move decides the rounding of the mean, about
/// move / mean of the time, and then costs a mispredicted branch.
template <class Value>
class GuessedRunningMean {
public:
    explicit GuessedRunningMean(Value first) : m_mean(first) {}

    Value value() const { return m_mean; }

    template <class Divisor>
    Value add(Value deviation, const Divisor& count) {
        Value next = m_mean + count.estimate(m_compensation, deviation);
        const Value move = count.quotient(deviation);
        const Value corrected = m_compensation + move;
        const Value confirmed = m_mean + corrected;
        if (differ(next, confirmed)) [[unlikely]] {
            next = confirmed;
        }
        m_compensation = corrected - (next - m_mean);
        m_mean = next;
        return move;
    }

private:
    // By their bits, since zeros of either sign are equal.
    static bool differ(double guess, double exact) {
        return std::bit_cast<std::uint64_t>(guess) != std::bit_cast<std::uint64_t>(exact);
    }
    static bool differ(Pair guess, Pair exact) {
        using Bits [[gnu::vector_size(16)]] = std::uint64_t;
        return kernels::any_sign(
            std::bit_cast<Pair>(std::bit_cast<Bits>(guess) != std::bit_cast<Bits>(exact)));
    }

    Value m_mean;
    Value m_compensation{};
};

}  // namespace vela::descriptive

#endif
