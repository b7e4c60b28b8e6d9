#ifndef VELA_DESCRIPTIVE_KAHAN_HPP
#define VELA_DESCRIPTIVE_KAHAN_HPP

namespace vela::descriptive {

/// Compensated accumulator. The value read back is the sum alone: the compensation is never folded
/// in at the end.
class KahanSum {
public:
    KahanSum() = default;
    explicit KahanSum(double start) : m_sum(start) {}

    void add(double term) {
        const double corrected = m_compensation + term;
        const double sum = m_sum + corrected;
        m_compensation = corrected - (sum - m_sum);
        m_sum = sum;
    }

    double value() const { return m_sum; }

private:
    double m_sum = 0.0;
    double m_compensation = 0.0;
};

}  // namespace vela::descriptive

#endif
