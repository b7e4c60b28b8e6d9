// No library, but the floor under a compensated sum: four additions per value, each of which waits
// for the one before.

#include "functions.hpp"

namespace bench {
namespace {

double addition_chain(const double* x, std::size_t n) {
    double sum = 0.0;
    for (std::size_t i = 0; i < n; ++i) {
        sum = sum + 0.25 * x[i] + 0.25 * x[i] + 0.25 * x[i] + 0.25 * x[i];
    }
    return sum;
}

[[maybe_unused]] const bool added = add_peer({"floor", {}, {{"Sum", addition_chain}}});

}  // namespace
}  // namespace bench
