#ifndef VELA_V1_RUNS_TEST_HPP
#define VELA_V1_RUNS_TEST_HPP

#include "vela/api.hpp"

#include <cstdint>

/// Runs test: whether a sequence is in random order about a reference value.
///
/// Each observation is above the reference or below it; a run is a longest block of consecutive
/// observations in the same class. Too few runs mean drift or clusters, too many mean alternation;
/// the test is two-sided always.
///
/// Both variants return 0. Nothing is thrown, whatever floating-point state the caller left. A NaN
/// among the observations is not above the reference and so counts as below.
namespace vela::v1 {

/// Record of the runs test. The counts are 0 and the doubles NaN at first; each call writes every
/// field.
struct VELA_API RunsTest {
    RunsTest();
    RunsTest(const RunsTest& other);
    RunsTest(RunsTest&& other) noexcept;
    RunsTest& operator=(const RunsTest& other);
    RunsTest& operator=(RunsTest&& other) noexcept;
    ~RunsTest() = default;

    std::uint32_t below;  ///< number of observations classed below the reference
    std::uint32_t above;  ///< number of observations above the reference
    std::uint32_t runs;   ///< number of runs
    double expected;      ///< 2 above below / (above + below) + 1; NaN without an observation
    double pValue;        ///< two-sided
};

/// Observations equal to K are dropped: they neither count nor end a run. P-value from the exact
/// distribution, min(1, 2 min(P(R <= runs), P(R >= runs))) with
///
///     P(R = 2k)     = 2 C(below - 1, k - 1) C(above - 1, k - 1) / C(below + above, above)
///     P(R = 2k + 1) = (C(above - 1, k - 1) C(below - 1, k) + C(below - 1, k - 1) C(above - 1, k))
///                     / C(below + above, above)
///
/// With fewer than two runs the P-value is 0, deliberately: the sums begin at two.
///
/// @param record  every field is written
/// @param x       n observations in the order in which they were made; may be null when n is 0
/// @param K       reference value, such as the mean or the median
/// @param n       number of observations
/// @accuracy relative error 2e-13 for 100 observations, 2e-12 for 1000, 3e-11 for 1e4 and 4e-9 for
///           1e6 (5 % to 50 % of them below, up to 8 standard deviations from the expected number):
///           what the logarithms of the binomial coefficients allow; below 1e-300 it is 0
/// @see Wald & Wolfowitz (1940), On a test whether two samples are from the same population, Annals
///      of Mathematical Statistics 11; Stevens (1939), Distribution of groups in a sequence of
///      alternatives, Annals of Eugenics 9
VELA_API int RunRunsTest(RunsTest* record, const double* x, double K, std::uint32_t n);

/// Observations equal to K count as below. P-value from the normal approximation without a
/// continuity correction; NaN where the number of runs cannot vary: one class or two observations.
/// @accuracy relative error of the P-value below 1e-9
VELA_API int RunKroRunsTest(RunsTest* record, const double* x, double K, std::uint32_t n);

}  // namespace vela::v1

#endif
