#include "kernels/saddle_point.hpp"

#include "support/csv.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace vela {
namespace {

using kernels::binomial_mass;
using kernels::poisson_mass;
using kernels::stirling_error;

double evaluate(const test::Row& row) {
    const double first = test::parse_double(row[1]);
    if (row[0] == "stirling") {
        return stirling_error(first);
    }
    const double second = test::parse_double(row[2]);
    return row[0] == "poisson" ? poisson_mass(first, second)
                               : binomial_mass(first, second, test::parse_double(row[3]),
                                               test::parse_double(row[4]));
}

TEST(SaddlePoint, MassesKeepRelativeAccuracy) {
    constexpr double promised = 1e-13;
    for (const test::Row& row : test::read_csv("saddle_point.csv")) {
        const double expected = test::parse_double(row[5]);
        EXPECT_NEAR(evaluate(row), expected, promised * expected)
            << row[0] << " " << row[1] << " " << row[2] << " " << row[3];
    }
}

TEST(SaddlePoint, SureAndImpossibleCountsAreExact) {
    EXPECT_EQ(poisson_mass(0.0, 0.0), 1.0);
    EXPECT_EQ(poisson_mass(2.0, 0.0), 0.0);
    EXPECT_EQ(binomial_mass(0.0, 7.0, 0.0, 1.0), 1.0);
    EXPECT_EQ(binomial_mass(7.0, 7.0, 0.0, 1.0), 0.0);
    EXPECT_EQ(binomial_mass(7.0, 7.0, 1.0, 0.0), 1.0);
    EXPECT_EQ(binomial_mass(0.0, 0.0, 0.3, 0.7), 1.0);
}

// A mass that is too small, or arguments beyond every table, must not fault on the way.
TEST(SaddlePoint, VanishesFarFromTheMean) {
    for (const double far : {2e3, 1e10, 1e200, 1.7e308}) {
        EXPECT_EQ(poisson_mass(3.0, far), 0.0);
        EXPECT_EQ(poisson_mass(far, 3.0), 0.0);
        EXPECT_EQ(binomial_mass(0.0, far, 0.5, 0.5), 0.0);
    }
    EXPECT_EQ(poisson_mass(20.0, 1e-300), 0.0);
    EXPECT_EQ(binomial_mass(1e5, 1e6, 1e-300, 1.0), 0.0);
}

}  // namespace
}  // namespace vela
