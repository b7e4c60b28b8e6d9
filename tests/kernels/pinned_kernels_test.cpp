// The kernels whose steps are fixed, against tests/data/kernels.csv: the same steps transcribed in
// another language by tools/kernel_transcription.py.

#include "conventions/error_channel.hpp"
#include "kernels/gamma_newton.hpp"
#include "kernels/guarded.hpp"
#include "kernels/incomplete_gamma.hpp"
#include "kernels/lanczos.hpp"
#include "kernels/normal.hpp"
#include "kernels/regula_falsi_root.hpp"
#include "kernels/stirling.hpp"
#include "support/csv.hpp"
#include "vela/v2/psi.hpp"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <limits>
#include <map>
#include <set>
#include <string>

namespace {

using namespace vela::kernels;
using vela::conventions::error_channel;
using vela::test::Row;

using Values = std::array<double, 3>;
using Kernel = std::function<void(const Values&, Values&)>;

// What the transcription leaves open is the order of a few factors and the way to Gamma(a) - 1/a,
// each good for an ulp or two. A changed formula, constant or stop shows as thousands of ulps.
constexpr std::int64_t kMaxUlps = 8;

void solve_normal(const Values& in, Values& out) {
    CmStandardNormalCdf equation(in[2]);
    int status = -1;
    out[0] = regula_falsi_root(in[0], in[1], equation, &status);
    out[1] = status;
}

void refine(const Values& in, Values& out, char tail) {
    out[0] = in[2];
    gamma_newton(in[0], in[1], out.data(), tail);
}

const std::map<std::string, Kernel> kKernels{
    {"gamma_pq", [](auto& in, auto& out) { gamma_pq(in[0], in[1], &out[0], &out[1], &out[2]); }},
    {"gamma_log_density", [](auto& in, auto& out) { gamma_log_density(in[0], in[1], &out[0]); }},
    {"gamma_Iax", [](auto& in, auto& out) { out[1] = gamma_Iax(in[0], in[1], &out[0]); }},
    {"gamma_Jax", [](auto& in, auto& out) { out[1] = gamma_Jax(in[0], in[1], &out[0]); }},
    {"gamma_cf", [](auto& in, auto& out) { out[1] = gamma_cf(in[0], in[1], &out[0]); }},
    {"gamma_upper_small", [](auto& in, auto& out) { out[0] = upper_gamma_small(in[0], in[1]); }},
    {"gamma_newton_L", [](auto& in, auto& out) { refine(in, out, 'L'); }},
    {"gamma_newton_U", [](auto& in, auto& out) { refine(in, out, 'U'); }},
    {"gamma_stirling", [](auto& in, auto& out) { out[0] = gamma_stirling(in[0]); }},
    {"lgamma_stirling", [](auto& in, auto& out) { out[0] = lgamma_stirling(in[0]); }},
    {"stirling_remainder", [](auto& in, auto& out) { out[0] = stirling_remainder(in[0]); }},
    {"expm1_accurate", [](auto& in, auto& out) { out[0] = expm1_accurate(in[0]); }},
    {"lgamma_lanczos_nan", [](auto& in, auto& out) { out[0] = lgamma_lanczos_nan(in[0]); }},
    {"log_binomial",
     [](auto& in, auto& out) {
         out[0] = log_binomial(static_cast<unsigned>(in[0]), static_cast<unsigned>(in[1]));
     }},
    {"psi", [](auto& in, auto& out) { out[0] = vela::v2::Psi(in[0]); }},
    {"safe_pow", [](auto& in, auto& out) { out[0] = safe_pow(in[0], in[1]); }},
    {"normal_df", [](auto& in, auto& out) { normal_df(in[0], &out[0], &out[1]); }},
    {"normal_upper_quant", [](auto& in, auto& out) { normal_upper_quant(in[0], &out[0]); }},
    {"inv_normal_df", [](auto& in, auto& out) { inv_normal_df(in[0], &out[0]); }},
    {"normal_inv_cdf", [](auto& in, auto& out) { out[0] = normal_inv_cdf(in[0], in[1], in[2]); }},
    {"normal_root", solve_normal},
};

/// Doubles between a and b of one sign; a NaN is near a NaN only.
std::int64_t ulps_between(double a, double b) {
    if (a == b || (a != a && b != b)) {
        return 0;
    }
    const bool isComparable = a == a && b == b && std::signbit(a) == std::signbit(b);
    return isComparable ? std::abs(std::bit_cast<std::int64_t>(a) - std::bit_cast<std::int64_t>(b))
                        : std::numeric_limits<std::int64_t>::max();
}

void expect_field(const std::string& expected, const std::string& actual, const char* what) {
    if (!expected.empty()) {
        EXPECT_EQ(actual, expected) << what;
    }
}

TEST(PinnedKernels, FollowTheirTranscription) {
    std::set<std::string> covered;
    for (const Row& row : vela::test::read_csv("kernels.csv")) {
        ASSERT_EQ(row.size(), 11u);
        SCOPED_TRACE(row[0] + " " + row[1] + " " + row[2] + " " + row[3]);
        covered.insert(row[0]);
        Values in{};
        for (std::size_t i = 0; i < 3 && !row[1 + i].empty(); ++i) {
            in[i] = vela::test::parse_double(row[1 + i]);
        }
        constexpr double untouched = -77.0;
        Values out{untouched, untouched, untouched};
        error_channel = {};
        kKernels.at(row[0])(in, out);
        for (std::size_t i = 0; i < 3; ++i) {
            if (!row[4 + i].empty()) {
                const double expected = vela::test::parse_double(row[4 + i]);
                EXPECT_LE(ulps_between(out[i], expected), kMaxUlps) << out[i] << " " << expected;
            } else if (row[0] == "gamma_pq") {
                EXPECT_EQ(out[i], untouched) << "invalid arguments leave the outputs alone";
            }
        }
        expect_field(row[7], std::to_string(error_channel.kernel_error_level), "level");
        expect_field(row[8], error_channel.kernel_routine_name, "routine name");
        expect_field(row[9], std::to_string(error_channel.kernel_path_code), "path code");
        expect_field(row[10], std::to_string(error_channel.kernel_iterations), "iterations");
    }
    EXPECT_EQ(covered.size(), kKernels.size());
}

}  // namespace
