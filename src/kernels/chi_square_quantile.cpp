#include "kernels/chi_square_quantile.hpp"

#include "conventions/error_channel.hpp"

namespace vela::kernels {

void ChiSquareQuantile::find(double p, double* x) const {
    m_gamma.find(p, x);
    if (!conventions::kernel_failed()) {
        *x *= 2.0;
    }
    conventions::name_kernel("inv_chi2_df");
}

void inv_chi2_df(double p, double df, double* x) { ChiSquareQuantile(df).find(p, x); }

}  // namespace vela::kernels
