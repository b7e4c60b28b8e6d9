#ifndef VELA_TESTS_SUPPORT_THREADS_HPP
#define VELA_TESTS_SUPPORT_THREADS_HPP

#include "support/floating_point_state.hpp"
#include "vela/floating_point.hpp"

#include <gtest/gtest.h>

#include <thread>

namespace vela::test {

/// Registration for floating-point exceptions is for a thread's lifetime, so each test that depends
/// on it runs on a thread of its own.
enum class Registration { kRegistered, kUnregistered };

template <class Function>
void on_thread(Registration registration, Function function) {
    std::thread([&] {
        if (registration == Registration::kRegistered) {
            RegisterKroSigfpeHandler();
        }
        function();
    }).join();
}

/// The call under a host that left its traps armed and expects to find them so. A fault ends it by
/// an exception that nobody catches.
template <class Function>
void under_armed_host(Function function) {
    on_thread(Registration::kRegistered, [&] {
        SetKroFpuStates();
        const bool wereArmed = traps_are_armed();
        function();
        EXPECT_EQ(traps_are_armed(), wereArmed) << "the host has its own state back";
        ResetFpuStates();
    });
}

}  // namespace vela::test

#endif
