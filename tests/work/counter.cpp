#include <cstdint>

/// Basic blocks of the library that this thread has run.
thread_local std::uint64_t blocksRun = 0;

/// The compiler calls this from every basic block of the library.
extern "C" void __sanitizer_cov_trace_pc() { ++blocksRun; }
