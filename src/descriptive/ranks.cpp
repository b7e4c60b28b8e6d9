#include "conventions/quiet_nan.hpp"
#include "conventions/status.hpp"
#include "descriptive/ordering.hpp"
#include "vela/v1/order_statistics.hpp"

#include <algorithm>

namespace vela::v1 {

using descriptive::SortedOrder;

void GetOrder(const double* x, unsigned int n, unsigned int* order) {
    descriptive::write_order(x, n, order);
}

int GetRank(const double* x, unsigned int n, double* ranks) {
    const SortedOrder order(x, n);
    if (!order) {
        std::fill_n(ranks, n, conventions::kNaN);
        return conventions::kOutOfMemory;
    }
    constexpr std::size_t kAhead = 16;  // stores all over the ranks are asked for this much earlier
    for (std::size_t first = 0, end = 1; first < n; first = end++) {
        while (end < n && order.is_tied(end)) {
            ++end;
        }
        const double rank =
            static_cast<double>(first) + (static_cast<double>(end - first) + 1.0) / 2.0;
        for (std::size_t i = first; i < end; ++i) {
            __builtin_prefetch(ranks + order[std::min<std::size_t>(i + kAhead, n - 1)], 1);
            ranks[order[i]] = rank;
        }
    }
    return conventions::kSuccess;
}

}  // namespace vela::v1
