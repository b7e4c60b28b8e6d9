#include "conventions/quiet_nan.hpp"
#include "conventions/status.hpp"
#include "descriptive/ordering.hpp"
#include "vela/v1/moments.hpp"
#include "vela/v1/order_statistics.hpp"

#include <cmath>
#include <cstdint>

namespace vela::v1 {

namespace {

/// Mean of what is left when `cut` <= n values are taken off each end; status is 0 on entry.
double mean_within(const double* x, std::uint32_t n, std::uint32_t cut, int* status) {
    const descriptive::SortedCopy sorted(x, n);
    if (!sorted) {
        *status = conventions::kOutOfMemory;
        return conventions::kNaN;
    }
    if (cut >= n - cut) {
        return conventions::kNaN;
    }
    return GetSampleMean(sorted.values() + cut, n - cut - cut);
}

}  // namespace

double GetTrimmedMean(const double* x, unsigned int n, double alpha, int* status) {
    *status = conventions::kSuccess;
    if (n == 0 || alpha != alpha || alpha < 0.0) {
        return conventions::kNaN;
    }
    // From 1 on everything is cut; n * alpha of such an alpha need not fit into a count.
    const std::uint32_t cut = alpha < 1.0 ? static_cast<std::uint32_t>(n * alpha) : n;
    return mean_within(x, n, cut, status);
}

double GetKroTrimmedMean(const double* x, unsigned int n, int* status) {
    *status = conventions::kSuccess;
    if (n == 0) {
        return conventions::kNaN;
    }
    return mean_within(x, n, static_cast<std::uint32_t>(std::floor(0.05 * n + 0.5)), status);
}

}  // namespace vela::v1
