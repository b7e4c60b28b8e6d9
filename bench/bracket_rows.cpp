// What the bracket around every exported distribution call costs: TriangularCdf, which has next to
// no work of its own, is compared with a function of the same comparisons and divisions. The
// divisions round, as nearly all arithmetic does: with exact ones, asking for the status would seem
// to cost nothing.

#include "rows.hpp"
#include "vela/floating_point.hpp"
#include "vela/missing_value.hpp"
#include "vela/triangular.hpp"

#include <cmath>
#include <thread>

namespace bench {
namespace {

constexpr int kCalls = 256;

template <class Call>
void measure(benchmark::State& state, Call call) {
    double x = 1.5;
    for (auto _ : state) {
        for (int i = 0; i < kCalls; ++i) {
            benchmark::DoNotOptimize(x);
            benchmark::DoNotOptimize(call(x));
        }
    }
    state.counters[kCallsCounter] = kCalls;
}

[[gnu::noinline]] double triangular_cdf(double x, double a, double b, double c, bool upper) {
    if (upper) {
        return 1.0 - triangular_cdf(x, a, b, c, false);
    }
    if (x == vela::MissingValue || x != x || !(a <= b && b <= c && a < c) || !std::isfinite(a) ||
        !std::isfinite(c)) {
        return x;
    }
    if (x >= c || x <= a) {
        return x >= c ? 1.0 : 0.0;
    }
    return x <= b ? (x - a) / (b - a) * ((x - a) / (c - a))
                  : ((c - x) / (c - b) + 1.0) * ((x - b) / (c - a)) + (b - a) / (c - a);
}

double plain_call(double x) { return triangular_cdf(x, 0.0, 3.0, 7.0, false); }

double bracketed_call(double x) { return vela::TriangularCdf(x, 0.0, 3.0, 7.0, false); }

int both_states(double /*unused*/) {
    vela::SetKroFpuStates();
    vela::ResetFpuStates();
    return 0;
}

template <class Body>
void add(RowOrder& rows, const std::string& row, Body body) {
    rows.push_back(row);
    benchmark::RegisterBenchmark((row + "/vela").c_str(), body);
}

}  // namespace

void on_unregistered_thread(const std::function<void()>& body) { std::thread(body).join(); }

void add_bracket_rows(RowOrder& rows) {
    add(rows, kPlainCallRow, [](benchmark::State& state) { measure(state, plain_call); });
    add(rows, kRegisteredCallRow, [](benchmark::State& state) { measure(state, bracketed_call); });
    add(rows, kUnregisteredCallRow, [](benchmark::State& state) {
        on_unregistered_thread([&] { measure(state, bracketed_call); });
    });
    add(rows, "SetKroFpuStates and ResetFpuStates",
        [](benchmark::State& state) { measure(state, both_states); });
}

}  // namespace bench
