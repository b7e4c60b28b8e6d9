#ifndef VELA_KERNELS_BETA_POWER_HPP
#define VELA_KERNELS_BETA_POWER_HPP

#include "kernels/double_double.hpp"

#include <optional>

namespace vela::kernels {

/// A point of the unit interval with its complement, each to more than double precision. With
/// shapes of 1e8 the rounding of one double in x or in 1 - x would cost eight digits of a tail.
struct BetaPoint {
    DoubleDouble x;
    DoubleDouble y;  // 1 - x

    /// The smaller of the two doubles is taken as exact, the other as its complement.
    static BetaPoint from_doubles(double x, double y);

    /// x = 1 / (1 + ratio), y = ratio / (1 + ratio), for 0 < ratio < 1e150.
    static BetaPoint from_ratio(DoubleDouble ratio);
};

/// x^a y^b / B(a, b) for shapes a and b: the beta density in ln(x / y), the factor of every form of
/// the incomplete beta function, a multiple of the binomial mass and of the F density. Everything
/// that depends on the shapes alone is computed once.
class BetaPower {
public:
    /// 1e-150 <= a, b <= 1e150.
    BetaPower(double a, double b);

    double a() const { return m_a; }
    double b() const { return m_b; }

    /// The power with the point and what is computed on the way from it.
    struct Value {
        double x, y;
        double power;
        double margin;    // a y - b x, for large shapes as if rounded once
        double deviance;  // -ln(power / peak) for large shapes near the mean, else kLargestDouble
    };

    /// At a point with 0 < x.hi and 0 < y.hi. Relative error at most 1e-14 down to 1e-290.
    Value value(const BetaPoint& point) const;
    double at(const BetaPoint& point) const { return value(point).power; }

    /// The same at the point whose odds y / x are f times those at the mean, b / a, as in the F
    /// distribution, at half the cost. Nothing where it takes the long way: near the mean of large
    /// shapes, and where one of the powers is tiny. None of f, a, b and b f is near an end of the
    /// range of doubles.
    std::optional<Value> value_at_f(double f) const;

    /// The same over x y, the beta density; infinite where it exceeds the range of doubles.
    double density(const BetaPoint& point) const;

    /// ln B(a, b) as a double has it.
    double log_beta() const;

    /// The power at the mean over what a normal density has there; near 1 unless a shape is small.
    double peak_ratio() const;

private:
    bool is_near_mean(double margin) const;
    double rest_of_logs(DoubleDouble u, DoubleDouble v) const;
    bool stretched_powers(DoubleDouble u, DoubleDouble v, double* result) const;
    DoubleDouble deviance_at(const BetaPoint& point, DoubleDouble margin) const;

    double m_a;
    double m_b;
    DoubleDouble m_total;
    double m_scale;           // of the exponential or of the powers
    bool m_isDirect;          // no Stirling formula: the powers are those of x and y
    DoubleDouble m_stretchX;  // (a + b) / a
    DoubleDouble m_stretchY;  // (a + b) / b
};

}  // namespace vela::kernels

#endif
