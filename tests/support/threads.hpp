#ifndef VELA_TESTS_SUPPORT_THREADS_HPP
#define VELA_TESTS_SUPPORT_THREADS_HPP

#include "vela/floating_point.hpp"

#include <thread>
#include <utility>

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

}  // namespace vela::test

#endif
