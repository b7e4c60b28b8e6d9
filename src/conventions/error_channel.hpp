#ifndef VELA_CONVENTIONS_ERROR_CHANNEL_HPP
#define VELA_CONVENTIONS_ERROR_CHANNEL_HPP

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace vela::conventions {

/// How bad the last kernel's report is. From `kInvalidArgument` on its outputs must not be used.
enum ErrorLevel : std::int32_t {
    kNoError = 0,
    kWarning = 1,           // a result was clamped to its bound and is still valid
    kInvalidArgument = 2,   // an argument outside the kernel's domain
    kArgumentTooLarge = 3,  // beyond what the algorithm can resolve
    kNoConvergence = 4
};

/// What the last kernel on this thread said about its result. Each thread has its own, so that
/// independent threads may call the library at once.
struct ErrorChannel {
    std::int32_t kernel_error_level = kNoError;
    std::int32_t kernel_path_code = 0;   // branch that produced the last result; diagnosis only
    std::int32_t kernel_iterations = 0;  // terms or steps of the last series; diagnosis only
    char kernel_routine_name[32] = {};   // the kernel that ran last or that raised the level
};

extern constinit thread_local ErrorChannel error_channel;

template <std::size_t size>
void name_kernel(const char (&name)[size]) {
    static_assert(size <= sizeof error_channel.kernel_routine_name);
    std::memcpy(error_channel.kernel_routine_name, name, size);
}

/// First statement of a kernel: no error so far, and this is the kernel that runs.
template <std::size_t size>
void enter_kernel(const char (&name)[size]) {
    error_channel.kernel_error_level = kNoError;
    name_kernel(name);
}

/// Raises the level, never lowers it: what an inner kernel reported stays visible to the caller.
template <std::size_t size>
void raise_level(ErrorLevel level, const char (&name)[size]) {
    if (error_channel.kernel_error_level < level) {
        error_channel.kernel_error_level = level;
        name_kernel(name);
    }
}

/// Last statement of a kernel: a negative level is an internal mark that no caller may see.
template <std::size_t size>
void clear_negative_level(const char (&name)[size]) {
    if (error_channel.kernel_error_level < 0) {
        enter_kernel(name);
    }
}

/// True when the outputs of the kernel that has just returned must not be used. A negative level
/// left by mistake counts as a failure too.
inline bool kernel_failed() {
    return static_cast<std::uint32_t>(error_channel.kernel_error_level) > kWarning;
}

}  // namespace vela::conventions

#endif
