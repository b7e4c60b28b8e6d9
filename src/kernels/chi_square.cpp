#include "kernels/chi_square.hpp"

#include "conventions/error_channel.hpp"
#include "kernels/incomplete_gamma.hpp"
#include "kernels/limits.hpp"

namespace vela::kernels {

void chi2_df(double x, double df, double* lower, double* upper) {
    gamma_pq(x * 0.5, df * 0.5, lower, upper, nullptr);
    if (conventions::kernel_failed()) {
        *lower = kLargestDouble;
        *upper = kLargestDouble;
    }
}

}  // namespace vela::kernels
