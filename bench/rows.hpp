#ifndef VELA_BENCH_ROWS_HPP
#define VELA_BENCH_ROWS_HPP

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// The rows in the order of the table; they are measured in random order.
using RowOrder = std::vector<std::string>;

/// Each registers benchmarks named "row/implementation" and appends the names of its rows. In a
/// row's name, what stands before the first comma is the group that the summary adds up.
void add_bracket_rows(RowOrder& rows);
void add_distribution_rows(RowOrder& rows);
void add_sample_rows(RowOrder& rows);
void add_order_rows(RowOrder& rows);

/// Counters that a benchmark leaves for the table: calls per iteration, and the largest relative
/// difference of a peer's results from ours.
inline constexpr const char* kCallsCounter = "calls";
inline constexpr const char* kDifferenceCounter = "difference";

/// The rows whose differences are the cost of the bracket.
inline constexpr const char* kPlainCallRow = "Call without bracket";
inline constexpr const char* kRegisteredCallRow = "Call with bracket, registered thread";
inline constexpr const char* kUnregisteredCallRow = "Call with bracket, unregistered thread";

/// Registration lasts as long as its thread. The main thread is registered, as a host's threads
/// are, so what is to run without it runs on a thread of its own.
void on_unregistered_thread(const std::function<void()>& body);

}  // namespace bench

#endif
