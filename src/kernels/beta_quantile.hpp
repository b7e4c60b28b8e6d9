#ifndef VELA_KERNELS_BETA_QUANTILE_HPP
#define VELA_KERNELS_BETA_QUANTILE_HPP

#include "kernels/beta.hpp"
#include "kernels/positive_quantile.hpp"

namespace vela::kernels {

/// Quantiles of the beta distribution with shapes a and b; what depends on the shapes alone is
/// computed once.
class BetaQuantile {
public:
    /// Shapes outside 1e-150..1e150 are reported by the functions below, not here.
    BetaQuantile(double a, double b);

    /// A quantile as odds, which neither end of the unit interval can round away.
    struct Odds {
        double ratio;  // x / y, or y / x where isInverse; may be 0 or infinite
        bool isInverse;
        QuantileOutcome outcome;
        double logRatio = 0.0;  // where the ratio is next to the denormal numbers or below, else 0
    };

    /// For 0 < p, 0 < q, p + q = 1 and valid shapes: no checks, no report of the search's own.
    Odds odds(double p, double q) const;

    /// The quantile and its complement; see inv_beta_df().
    void find(double p, double q, double* x, double* y) const;

private:
    /// The problem with the smaller tail as the lower one, shapes exchanged if need be.
    struct Side {
        double a, b;
        double p;
        double logP;
        double q;
    };

    bool closed_form(const Side& side, double* ratio) const;
    double start(const Side& side, double logX) const;
    bool polish(const Side& side, bool isExchanged, double* ratio) const;
    double far_start(const Side& side) const;
    double deviance_start(const Side& side, double z) const;
    double power_law_start(const Side& side, double logX) const;
    double saddle_start(const Side& side) const;
    TailAndSlope lower_tail(double ratio, bool isExchanged) const;

    double m_a;
    double m_b;
    int m_level;  // what the shapes deserve
    BetaShapes m_shapes;
    double m_total;
    double m_logBeta;
    double m_rootCurvature;  // of -ln(density of ln(x / y)) at the mean
    double m_peakRatio;      // that density at the mean over its normal approximation
};

/// The x with I_x(a, b) = p, and y = 1 - x, both at full relative precision.
///
/// @param p,q  0 <= p <= 1 and its complement at full relative precision; the smaller one is used
/// @param a,b  shapes > 0
///
/// Routine name "inv_beta_df". Level 2: arguments outside the domain; level 3: a shape outside
/// 1e-150..1e150; level 4: not found. From level 2 on both outputs are the largest negative double.
///
/// @accuracy beta_df() of the result is the smaller of p and q to 6e-14 relative, or to what half
/// an ulp of x / y means to it; 8e-15 where that is 1e-10 or more. Random grids of 960,000 points,
/// shapes 1e-3 to 1e6, p and q down to 1e-280. Next to the denormal numbers: level 4.
void inv_beta_df(double p, double q, double a, double b, double* x, double* y);

}  // namespace vela::kernels

#endif
