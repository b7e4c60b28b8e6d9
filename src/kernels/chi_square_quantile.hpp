#ifndef VELA_KERNELS_CHI_SQUARE_QUANTILE_HPP
#define VELA_KERNELS_CHI_SQUARE_QUANTILE_HPP

#include "kernels/gamma_quantile.hpp"

namespace vela::kernels {

/// The central chi-square distribution with df degrees of freedom, twice a gamma variable of shape
/// df / 2, prepared for many quantiles.
class ChiSquareQuantile {
public:
    explicit ChiSquareQuantile(double df) : m_gamma(0.5 * df) {}

    /// The x with P(X <= x) = p. Routine name "inv_chi2_df"; levels and the failed value -DBL_MAX
    /// are those of GammaQuantile::find().
    void find(double p, double* x) const;

private:
    GammaQuantile m_gamma;
};

/// One quantile; see ChiSquareQuantile::find().
void inv_chi2_df(double p, double df, double* x);

}  // namespace vela::kernels

#endif
