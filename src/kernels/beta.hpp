#ifndef VELA_KERNELS_BETA_HPP
#define VELA_KERNELS_BETA_HPP

#include "kernels/beta_power.hpp"

/// The incomplete beta family at full double accuracy.
namespace vela::kernels {

/// The incomplete beta function of shapes a and b, with everything that depends on them alone.
class BetaShapes {
public:
    /// 1e-150 <= a, b <= 1e150.
    BetaShapes(double a, double b) : m_power(a, b) {}

    double a() const { return m_power.a(); }
    double b() const { return m_power.b(); }
    const BetaPower& power() const { return m_power; }

    /// Both tails at a point with 0 < x.hi and 0 < y.hi. False where a series or fraction met its
    /// cap; the level says so too.
    bool tails(const BetaPoint& point, double* lower, double* upper) const;

    /// The same at a point whose power is known.
    bool tails(const BetaPower::Value& at, double* lower, double* upper) const;

    /// The tails without a flush to 0 where a double still holds them, and power().at(point): the
    /// slope of the tails in ln(x / y), which every method computes on its way.
    bool tails_and_power(const BetaPoint& point, double* lower, double* upper, double* power) const;

private:
    bool are_halves() const { return a() == 0.5 && b() == 0.5; }
    bool unflushed_tails(const BetaPower::Value& at, double* lower, double* upper) const;

    BetaPower m_power;
};

/// Regularized incomplete beta function: *lower = I_x(a, b), *upper = 1 - I_x(a, b) = I_y(b, a).
///
/// @param x,y  0 <= x <= 1 and its complement at full relative precision (x + y = 1 to rounding);
///             the smaller one is taken as exact
/// @param a,b  shapes > 0
///
/// Routine name "beta_df". Level 1: a tail below exp(-662.34472) was set to 0. Level 2: arguments
/// outside the domain; level 3: a shape outside 1e-150..1e150; level 4: no convergence. From level
/// 2 on both outputs are the largest double.
///
/// @accuracy largest relative error of either tail on random grids of 300,000 points, shapes 1e-3
/// to 1e6, tails down to 2e-288: 1.5e-14; 1.5e-15 where both shapes exceed 60
void beta_df(double x, double y, double a, double b, double* lower, double* upper);

/// Power series of the incomplete beta function: I_x(a, b) = x^a y^b / (a B(a, b)) S with
/// S = 1 + x (a + b) / (a + 1) + x^2 (a + b) (a + b + 1) / ((a + 1) (a + 2)) + ...
/// Returns 0, or 4 (with the level and the routine name "beta_Iabx") where a million terms do not
/// suffice.
int beta_Iabx(double a, double b, double x, double* S);

/// Continued fraction of the incomplete beta function for a, b > 1 (Didonato & Morris 1992,
/// equation 9): I_x(a, b) = x^a y^b / B(a, b) J, with margin = a y - b x >= 0. Returns 0, or 4
/// (with the level and the routine name "beta_Jabx") at its cap.
int beta_Jabx(double a, double b, double x, double y, double margin, double* J);

}  // namespace vela::kernels

#endif
