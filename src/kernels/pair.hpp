#ifndef VELA_KERNELS_PAIR_HPP
#define VELA_KERNELS_PAIR_HPP

namespace vela::kernels {

/// Two doubles side by side: every operation is that of doubles, element by element, in one
/// instruction where there is one.
using Pair [[gnu::vector_size(16)]] = double;

}  // namespace vela::kernels

#endif
