// Threads that call everything at once, registered for floating-point exceptions and not, get what
// each gets alone. Under the thread sanitizer: and share nothing.

#include "support/threads.hpp"
#include "fuzz/exercise.hpp"

#include <gtest/gtest.h>

#include <latch>
#include <vector>

namespace vela::test {
namespace {

constexpr unsigned kThreads = 6;
constexpr unsigned kRounds = 400;

Registration registration_of(unsigned thread) {
    return thread % 2 == 0 ? Registration::kRegistered : Registration::kUnregistered;
}

/// Calls of the thread's own, of which each thread begins with another subject.
std::uint64_t digest_of(unsigned thread) {
    std::mt19937_64 bits(thread);
    Results results;
    for (unsigned round = 0; round < kRounds; ++round) {
        kExercises[(round + thread) % 4].run(bits, results);
    }
    return results.digest();
}

TEST(Threads, GetTogetherWhatEachGetsAlone) {
    std::vector<std::uint64_t> alone(kThreads);
    for (unsigned i = 0; i < kThreads; ++i) {
        on_thread(registration_of(i), [&] { alone[i] = digest_of(i); });
    }
    std::vector<std::uint64_t> together(kThreads);
    std::latch start(kThreads);
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, i] {
            on_thread(registration_of(i), [&] {
                start.arrive_and_wait();
                together[i] = digest_of(i);
            });
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(together, alone);
}

}  // namespace
}  // namespace vela::test
