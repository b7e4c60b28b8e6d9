// A user's program: the interval for the mean of ten differences. It fails when the digits are
// wrong, as they would be from a library built with other flags or loaded with other records.

#include "vela/vela.hpp"

#include <cmath>
#include <cstdio>

int main() {
    // Extra hours of sleep under the first drug: Student (1908), Biometrika 6.
    const double extraHours[] = {0.7, -1.6, -0.2, -1.2, -0.1, 3.4, 3.7, 0.8, 0.0, 2.0};
    vela::v0::OneSampleT test;
    test.count = 10;
    const int status =
        vela::v0::RunOneSampleT(&test, extraHours, 0.95, vela::IntervalType::TwoSided);
    std::printf("95%% interval for the mean: %.10f to %.10f\n", test.lower, test.upper);

    // The reference has ten decimals.
    const bool right = std::fabs(test.lower + 0.5297804135) < 1e-10 &&
                       std::fabs(test.upper - 2.0297804135) < 1e-10;
    return status == 0 && right ? 0 : 1;
}
