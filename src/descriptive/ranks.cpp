#include "conventions/quiet_nan.hpp"
#include "conventions/status.hpp"
#include "descriptive/few_values.hpp"
#include "descriptive/ordering.hpp"
#include "vela/v1/order_statistics.hpp"

#include <algorithm>
#include <array>

namespace vela::v1 {

using descriptive::kNaNImage;
using descriptive::SortedOrder;

namespace {

/// A rank is half of one more than the values below and the values not above. Of a few values all
/// pairs are compared sooner than any sort gets over its branches.
void rank_tiny_sample(const double* x, std::size_t n, double* ranks) {
    std::array<std::uint32_t, descriptive::kTinySample> twice;
    for (std::size_t i = 0; i < n; ++i) {
        std::uint32_t before = 0;
        for (std::size_t k = 0; k < i; ++k) {
            const std::uint32_t isBefore = (x[k] < x[i] ? 1U : 0U) + (x[k] <= x[i] ? 1U : 0U);
            before += isBefore;
            twice[k] += 2 - isBefore;
        }
        twice[i] = before + 2;  // one more, and itself, which is not above itself
    }
    for (std::size_t i = 0; i < n; ++i) {  // not sooner: the ranks may replace the values
        ranks[i] = static_cast<double>(twice[i]) / 2.0;
    }
}

/// For a sample in ascending order; false, with nothing written, for others.
bool rank_ascending(const double* x, std::size_t n, double* ranks) {
    const auto images = descriptive::tie_images_of(x);
    if (!descriptive::is_ascending(n, images)) {
        return false;
    }
    std::size_t first = 0;  // of a run of equal values, which ends before i
    std::size_t i = 0;
    std::uint64_t last = kNaNImage;
    const auto rank_run = [&] {
        const auto twiceTheRank = static_cast<std::int64_t>(first + i + 1);
        const double rank = static_cast<double>(twiceTheRank) / 2.0;
        while (first < i) {
            ranks[first++] = rank;
        }
    };
    descriptive::for_each_word(0, n, images, [&](std::uint64_t image) {
        if (image != last || image == kNaNImage) {
            rank_run();
        }
        last = image;
        ++i;
    });
    rank_run();
    return true;
}

/// For a sample of few values that repeat; false, with nothing written, for others.
[[gnu::noinline]] bool rank_few_values(const double* x, std::size_t n, double* ranks) {
    const auto images = descriptive::tie_images_of(x);
    descriptive::FewValues twice;
    if (!twice.count(n, images)) {
        return false;
    }
    twice.for_each([&](std::uint64_t image, std::uint64_t first, std::uint64_t end) {
        twice[image] = image == kNaNImage ? 2 * first + 2 : first + end + 1;
    });
    double* next = ranks;
    descriptive::for_each_word(0, n, images, [&](std::uint64_t image) {
        std::uint64_t& twiceTheRank = twice[image];
        *next++ = static_cast<double>(static_cast<std::int64_t>(twiceTheRank)) / 2.0;
        twiceTheRank += image == kNaNImage ? 2 : 0;  // of NaN each has its own
    });
    return true;
}

}  // namespace

void GetOrder(const double* x, unsigned int n, unsigned int* order) {
    descriptive::write_order(x, n, order);
}

int GetRank(const double* x, unsigned int n, double* ranks) {
    if (n < descriptive::kTinySample && descriptive::all_finite(x, n)) {
        rank_tiny_sample(x, n, ranks);
        return conventions::kSuccess;
    }
    // In place each value is read before its rank takes its place.
    const bool isApart = ranks == x || !descriptive::share_memory(x, n, ranks, n);
    if (isApart && (rank_ascending(x, n, ranks) || rank_few_values(x, n, ranks))) {
        return conventions::kSuccess;
    }
    SortedOrder order(x, n);
    if (!order) {
        std::fill_n(ranks, n, conventions::kNaN);
        return conventions::kOutOfMemory;
    }
    order.write_ranks(ranks);
    return conventions::kSuccess;
}

}  // namespace vela::v1
