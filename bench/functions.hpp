#ifndef VELA_BENCH_FUNCTIONS_HPP
#define VELA_BENCH_FUNCTIONS_HPP

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

/// What an implementation (this library or a peer) offers, in one shape, so that a row is measured
/// by the same code whoever computes it. The call through a pointer costs everyone the same.
namespace bench {

/// As our functions take them. What a row does not give is 0: no noncentrality, no threshold, and
/// as the last argument of a cumulative function the lower tail.
using Parameters = std::array<double, 4>;

/// A distribution function of a point. Implementations pair up by name.
struct PointFunction {
    std::string name;
    double (*scalar)(double x, const Parameters& parameters);
    void (*array)(double* out, const double* x, std::size_t n, const Parameters& parameters);
};

/// A procedure on n observations; the returned number depends on all results. Procedures on two
/// samples take the first and the second half of the observations.
struct SampleFunction {
    std::string_view name;
    double (*run)(const double* x, std::size_t n);
};

/// What OneSampleT asks of everyone: the mean, the two ends of the interval, and the two-sided
/// P-value. The returned number is lower + upper + P-value.
inline constexpr double kConfidence = 0.95;
inline constexpr double kHypothesizedMean = 100.0;

struct Implementation {
    const char* name;
    std::vector<PointFunction> points;
    std::vector<SampleFunction> samples;
    std::string version = {};

    const PointFunction* find_point(std::string_view function) const;
    const SampleFunction* find_sample(std::string_view function) const;
};

/// A peer adds itself when its source file is part of the build.
const Implementation& ours();
std::vector<Implementation>& peers();
bool add_peer(Implementation peer);

/// Relative to the larger one; infinite where one is not a number.
double relative_difference(double a, double b);

/// A peer's entry, from a function of (x, parameters), or from one of (parameters) that returns a
/// function of x: such a peer, too, does its work on the parameters once for a whole array.
template <auto function>
PointFunction point(std::string name) {
    static constexpr auto bind = [](const Parameters& parameters) {
        if constexpr (std::is_invocable_v<decltype(function), double, const Parameters&>) {
            return [&parameters](double x) { return function(x, parameters); };
        } else {
            return function(parameters);
        }
    };
    return {std::move(name),
            [](double x, const Parameters& parameters) { return bind(parameters)(x); },
            [](double* out, const double* x, std::size_t n, const Parameters& parameters) {
                const auto bound = bind(parameters);
                for (std::size_t i = 0; i < n; ++i) {
                    out[i] = bound(x[i]);
                }
            }};
}

/// What a peer has for no function of ours.
inline constexpr std::nullptr_t kNone = nullptr;

/// A peer's family: density, both tails and quantile, each as point() takes it, or kNone.
template <auto density, auto lower, auto upper, auto quantile>
void add_family(std::vector<PointFunction>& all, const std::string& family) {
    const auto add = [&]<auto function>(const char* suffix) {
        if constexpr (!std::is_null_pointer_v<decltype(function)>) {
            all.push_back(point<function>(family + suffix));
        }
    };
    add.template operator()<density>("Pdf");
    add.template operator()<lower>("Cdf");
    add.template operator()<upper>("UpperCdf");
    add.template operator()<quantile>("InvCdf");
}

}  // namespace bench

#endif
