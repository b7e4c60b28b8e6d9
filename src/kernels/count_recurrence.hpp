#ifndef VELA_KERNELS_COUNT_RECURRENCE_HPP
#define VELA_KERNELS_COUNT_RECURRENCE_HPP

/// Binomial, negative binomial and Poisson probabilities of small counts by adding up masses.
namespace vela::kernels {

/// Masses on 0, 1, 2, ... that rise and fall by
///   P(X = j + 1) / P(X = j) = scale (start + step j) / (j + 1)
/// (Panjer 1981). Every answer is either good to 5e-14 relative or declined: where the count is
/// large, the first mass below 1e-250, or the sum does not end soon. The caller then turns to its
/// general method.
class CountRecurrence {
public:
    static constexpr double kLongest = 400.0;

    /// Whether the first mass is worth computing for an answer at k; -ln P(X = 0) is at least
    /// `exponent`.
    static bool is_short(double k, double exponent, double longest = kLongest) {
        return k <= longest && exponent <= kLargestExponent;
    }

    CountRecurrence(double firstMass, double scale, double start, double step)
        : m_first(firstMass), m_scale(scale), m_start(start), m_step(step) {}

    /// P(X <= k) and P(X > k) at a whole k >= 0; false, and nothing written, where declined.
    bool tails(double k, double* lower, double* upper) const;

    /// P(X = k) at a whole k >= 0; negative where declined.
    double mass(double k) const;

    /// The smallest k with P(X <= k) >= p, 0 < p < 1, from 0 upwards. Declined, too, where p is so
    /// close to a step that rounding could decide.
    bool quantile(double p, double* k) const;

private:
    static constexpr double kLargestExponent = 575.0;
    static constexpr double kSmallestFirst = 1e-250;  // exp(-575.6)

    double ratio(double j) const { return m_scale * ((m_start + m_step * j) / (j + 1.0)); }

    double m_first;
    double m_scale;
    double m_start;
    double m_step;
};

}  // namespace vela::kernels

#endif
