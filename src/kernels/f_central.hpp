#ifndef VELA_KERNELS_F_CENTRAL_HPP
#define VELA_KERNELS_F_CENTRAL_HPP

#include "kernels/beta.hpp"

/// The central F distribution: tails, density and quantile.
namespace vela::kernels {

/// F with df1 and df2 degrees of freedom (> 0; infinite ones for the chi-square limits). What
/// depends on them alone is computed once, so that an array of arguments pays for it once.
class CentralF {
public:
    /// Invalid degrees of freedom are reported by the functions below, not here.
    CentralF(double df1, double df2);

    /// Both tails; see f_df().
    void tails(double x, double* lower, double* upper) const;

    /// The density; see f_density().
    double density(double x) const;

private:
    struct Place;
    Place place(double x) const;
    void point_tails(double x, double* lower, double* upper) const;
    double inner_density(double x) const;
    double density_at_zero() const;

    double m_df1;  // a double stands for infinity that is as good as infinite
    double m_df2;
    bool m_isPoint;       // both infinite: all mass at 1
    int m_level;          // what the degrees of freedom deserve
    bool m_isOrdinary;    // neither is near an end of the range of doubles
    BetaShapes m_shapes;  // df2 / 2 and df1 / 2, of 1 / (1 + df1 x / df2)
};

/// Lower and upper tail of the central F distribution at x: *lower = I_u(df1 / 2, df2 / 2) with
/// u = df1 x / (df1 x + df2); 0 and 1 for x <= 0.
///
/// Routine name "f_df". Level 1: a tail below exp(-662.34472) was set to 0. Level 2: degrees of
/// freedom not above 0, or a NaN; level 3: degrees of freedom below 2e-150; level 4: no
/// convergence. From level 2 on both outputs are the largest double.
void f_df(double x, double df1, double df2, double* lower, double* upper);

/// The x with P(F <= x) = p. 0 for p = 0. Routine name "inv_f_df". Level 2: p outside [0, 1) or
/// invalid degrees of freedom; level 3: degrees of freedom below 2e-150, or a quantile beyond the
/// largest double; level 4: not found. From level 2 on *x is the largest negative double. Accuracy
/// as inv_beta_df().
void inv_f_df(double p, double df1, double df2, double* x);

/// Density of the central F distribution; 0 for x < 0, the limit at 0, infinite where there is a
/// pole. Routine name "f_density"; levels 2 and 3 as f_df(), with the largest double as result.
/// Relative error 4e-15; 7e-14 where df1 x / df2 is below 1e-144 or above 1e144.
double f_density(double x, double df1, double df2);

}  // namespace vela::kernels

#endif
