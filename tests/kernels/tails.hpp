#ifndef VELA_TESTS_KERNELS_TAILS_HPP
#define VELA_TESTS_KERNELS_TAILS_HPP

#include "kernels/limits.hpp"
#include "support/equality.hpp"
#include "support/special_values.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

namespace vela::test {

struct Tails {
    double lower = 0.0;
    double upper = 0.0;

    bool operator==(const Tails&) const = default;
    friend std::ostream& operator<<(std::ostream& stream, const Tails& tails) {
        return stream << testing::PrintToString(tails.lower) << " and "
                      << testing::PrintToString(tails.upper);
    }
};

/// What the kernels write when they fail.
constexpr Tails kFailedTails = {kernels::kLargestDouble, kernels::kLargestDouble};

template <class Kernel, class... Arguments>
Tails tails_of(Kernel kernel, Arguments... arguments) {
    Tails tails;
    kernel(arguments..., &tails.lower, &tails.upper);
    return tails;
}

template <class Kernel, class... Arguments>
double quantile_of(Kernel kernel, Arguments... arguments) {
    double x = 0.0;
    kernel(arguments..., &x);
    return x;
}

inline bool within_relative(const Tails& got, const Tails& expected, double tolerance) {
    return within_relative(got.lower, expected.lower, tolerance) &&
           within_relative(got.upper, expected.upper, tolerance);
}

/// Expects the smaller tail at x to be that of p, but for the tolerance and for what a rounding of
/// x by that many ulps does to it, as the next double shows.
template <class TailsAt>
void expect_quantile(double x, double p, double tolerance, TailsAt tails_at, double ulps = 0.5) {
    const auto smaller = [&](double at) {
        return p <= 0.5 ? tails_at(at).lower : tails_at(at).upper;
    };
    const double expected = p <= 0.5 ? p : 1.0 - p;
    const double got = smaller(x);
    const double next = smaller(std::nextafter(x, kInfinity));
    EXPECT_LE(std::fabs(got - expected), tolerance * expected + ulps * std::fabs(next - got))
        << "p " << p << ", quantile " << x;
}

}  // namespace vela::test

#endif
