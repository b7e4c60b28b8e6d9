#include "kernels/chi_square_quantile.hpp"

#include "conventions/error_channel.hpp"

namespace vela::kernels {

using conventions::kernel_failed;

namespace {

void finish(double* x) {
    if (!kernel_failed()) {
        *x *= 2.0;
    }
    conventions::name_kernel("inv_chi2_df");
}

}  // namespace

void ChiSquareQuantile::find(double p, double* x) const {
    m_gamma.find(p, x);
    finish(x);
}

void inv_chi2_df(double p, double df, double* x) {
    inv_gamma_df(p, 0.5 * df, x);
    finish(x);
}

}  // namespace vela::kernels
