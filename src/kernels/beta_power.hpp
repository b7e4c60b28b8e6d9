#ifndef VELA_KERNELS_BETA_POWER_HPP
#define VELA_KERNELS_BETA_POWER_HPP

#include "kernels/beta.hpp"
#include "kernels/double_double.hpp"

namespace vela::kernels {

/// x^a y^b / B(a, b) for shapes a and b: the beta density in ln(x / y), a multiple of the binomial
/// mass and of the F density. Everything that depends on the shapes alone is computed once.
class BetaPower {
public:
    /// 1e-150 <= a, b <= 1e150.
    BetaPower(double a, double b);

    /// At a point with 0 < x.hi and 0 < y.hi. Relative error at most 1e-14 down to 1e-290.
    double at(const BetaPoint& point) const;

    /// The same over x y, the beta density; infinite where it exceeds the range of doubles.
    double density(const BetaPoint& point) const;

    /// ln B(a, b) as a double has it.
    double log_beta() const;

    /// The power at the mean, its largest value.
    double peak() const;

private:
    DoubleDouble exponent(const BetaPoint& point) const;
    double direct_density(const BetaPoint& point) const;

    double m_a;
    double m_b;
    double m_scale;  // gamma functions and powers, no exponentials
    DoubleDouble m_total;
    DoubleDouble m_logScale;  // what Stirling's formula leaves of the logarithm of 1 / B(a, b)
    bool m_direct;            // shapes small enough to need no Stirling formula
};

}  // namespace vela::kernels

#endif
