#ifndef VELA_DESCRIPTIVE_WORD_BUFFER_HPP
#define VELA_DESCRIPTIVE_WORD_BUFFER_HPP

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

namespace vela::descriptive {

/// Uninitialized storage for `count` words of 64 bits.
class WordBuffer {
public:
    WordBuffer() = default;
    explicit WordBuffer(std::size_t count)
        : m_bytes(count <= SIZE_MAX / sizeof(std::uint64_t)
                      ? new (std::nothrow) std::byte[count * sizeof(std::uint64_t)]
                      : nullptr) {}

    explicit operator bool() const { return m_bytes != nullptr; }
    void release() { m_bytes.reset(); }
    std::uint64_t* words() const { return reinterpret_cast<std::uint64_t*>(m_bytes.get()); }
    double* doubles() const { return reinterpret_cast<double*>(m_bytes.get()); }

private:
    std::unique_ptr<std::byte[]> m_bytes;
};

/// Up to this many words fit, twice, into the cache next to a core.
inline constexpr std::size_t kCacheWords = 65536;

/// Words to allocate for n words and the scratch space behind them. Of more than fit into the cache
/// most need little of it, and it is made to measure: half the memory, which a heap rather keeps for
/// the next call.
inline std::size_t with_scratch(std::size_t n) { return n <= kCacheWords ? 2 * n : n; }

/// The scratch space for n words: what stands behind them, or its own.
class Scratch {
public:
    Scratch(std::size_t n, std::uint64_t* behind) : m_words(n <= kCacheWords ? behind : nullptr) {}

    /// Makes room for `count` words, once; false when it could not be allocated.
    bool reserve(std::size_t count) {
        if (m_words == nullptr) {
            m_own = WordBuffer(count);
            m_words = m_own.words();
        }
        return m_words != nullptr;
    }
    std::uint64_t* words() const { return m_words; }

private:
    WordBuffer m_own;
    std::uint64_t* m_words;
};

}  // namespace vela::descriptive

#endif
