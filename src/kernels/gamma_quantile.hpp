#ifndef VELA_KERNELS_GAMMA_QUANTILE_HPP
#define VELA_KERNELS_GAMMA_QUANTILE_HPP

#include "kernels/incomplete_gamma.hpp"

/// Quantile of the gamma distribution with unit scale: the inverse of gamma_pq() in the smaller
/// tail.
namespace vela::kernels {

/// A shape with everything that depends on it alone, for many quantiles at one shape.
class GammaQuantile {
public:
    explicit GammaQuantile(double a) : m_a(a), m_shape(gamma_shape(a)) {}

    /// The x with P(a, x) = p; 0 for p = 0 and where x lies below the smallest double. Routine name
    /// "inv_gamma_df".
    ///
    /// Level 2: p outside [0, 1), NaN, or a shape that gamma_pq() refuses. Level 3: a lower tail
    /// below 2.3e-288, which gamma_pq() does not resolve, and whose quantile is not in the power
    /// law near 0 either. Level 4: no convergence. In all of them *x is -DBL_MAX.
    void find(double p, double* x) const;

private:
    double m_a;
    GammaShape m_shape;
};

/// One quantile at one shape; see GammaQuantile::find().
void inv_gamma_df(double p, double a, double* x);

}  // namespace vela::kernels

#endif
