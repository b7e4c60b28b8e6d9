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
    SortedOrder order(x, n);
    if (!order) {
        std::fill_n(ranks, n, conventions::kNaN);
        return conventions::kOutOfMemory;
    }
    order.write_ranks(ranks);
    return conventions::kSuccess;
}

}  // namespace vela::v1
