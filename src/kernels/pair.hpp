#ifndef VELA_KERNELS_PAIR_HPP
#define VELA_KERNELS_PAIR_HPP

#include <cmath>

namespace vela::kernels {

/// Two doubles side by side: every operation is that of doubles, element by element, in one
/// instruction where there is one.
using Pair [[gnu::vector_size(16)]] = double;

/// Whether one of the two sign bits is set.
inline bool any_sign(Pair values) {
#if defined(__SSE2__)
    return __builtin_ia32_movmskpd(values) != 0;
#else
    return std::signbit(values[0]) || std::signbit(values[1]);
#endif
}

}  // namespace vela::kernels

#endif
