// A fuzz target: VELA_EXERCISE is one of the exercises.

#include "fuzz/exercise.hpp"
#include "vela/floating_point.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int registered = vela::RegisterKroSigfpeHandler();
    vela::test::require(registered == 0);
    vela::test::Bytes bytes(data, size);
    vela::test::Results results;
    vela::test::VELA_EXERCISE(bytes, results);
    return 0;
}
