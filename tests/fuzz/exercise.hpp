#ifndef VELA_TESTS_FUZZ_EXERCISE_HPP
#define VELA_TESTS_FUZZ_EXERCISE_HPP

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>

/// Calls of the whole interface on arguments made from bytes: a fuzzer chooses the bytes to find a
/// call that misbehaves, and the digest takes them from a generator to compare builds.
namespace vela::test {

/// The bytes, then zeros.
class Bytes {
public:
    /// Samples are `scale` times as large as usual.
    Bytes(const std::uint8_t* data, std::size_t size, unsigned scale = 1)
        : m_data(data), m_left(size), m_scale(scale) {}

    unsigned scale() const { return m_scale; }

    template <class T>
    T next() {
        T value{};
        const std::size_t taken = m_left < sizeof(T) ? m_left : sizeof(T);
        if (taken != 0) {
            std::memcpy(&value, m_data, taken);
        }
        m_data += taken;
        m_left -= taken;
        return value;
    }

    unsigned below(unsigned limit) { return next<std::uint16_t>() % limit; }

    /// Any double: a special value, a small integer (so that there are ties), a fraction, a value
    /// of ordinary size, or any bits.
    double number();

    /// Mostly a confidence.
    double fraction();

private:
    const std::uint8_t* m_data;
    std::size_t m_left;
    unsigned m_scale;
};

/// Observations in a block of exactly their size, so that a sanitizer sees a read outside.
struct Sample {
    std::uint32_t count;
    std::unique_ptr<double[]> values;

    const double* data() const { return values.get(); }
};

/// Up to `most` numbers; half of the samples hold numbers of one kind only.
Sample make_sample(Bytes& bytes, unsigned most);
Sample make_sample_of(Bytes& bytes, std::uint32_t count);

/// FNV-1a over the bits of results; every NaN counts as the same.
class Results {
public:
    void add(double value) {
        ++m_count;
        add_word(value != value ? 0x7FF8000000000000U : std::bit_cast<std::uint64_t>(value));
    }
    template <class... Values>
    void add_each(Values... values) {
        (add(values), ...);
    }
    void add(const double* values, std::size_t n) {
        for (std::size_t i = 0; i < n; ++i) {
            add(values[i]);
        }
    }
    std::uint64_t digest() const { return m_digest; }
    std::size_t count() const { return m_count; }

private:
    void add_word(std::uint64_t word) {
        for (int shift = 0; shift < 64; shift += 8) {
            m_digest =
                (m_digest ^ ((word >> static_cast<unsigned>(shift)) & 0xFFU)) * 0x100000001B3U;
        }
    }

    std::uint64_t m_digest = 0xCBF29CE484222325U;
    std::size_t m_count = 0;
};

/// What holds for every input. A fuzzer reports the abort with the input that led to it.
inline void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

void exercise_distributions(Bytes& bytes, Results& results);
void exercise_arrays(Bytes& bytes, Results& results);
void exercise_records(Bytes& bytes, Results& results);
void exercise_clustering(Bytes& bytes, Results& results);

struct Exercise {
    const char* name;
    void (*call)(Bytes& bytes, Results& results);

    /// On drawn bytes, with samples `scale` times as large as a fuzzer's.
    void run(std::mt19937_64& bits, Results& results, unsigned scale = 1) const;
};
inline constexpr Exercise kExercises[] = {{"distributions", exercise_distributions},
                                          {"arrays", exercise_arrays},
                                          {"records", exercise_records},
                                          {"clustering", exercise_clustering}};

void print_digest(const char* name, const Results& results);

/// The digest of the C library's functions, on whose last bits the library's results depend.
void print_c_library(std::mt19937_64& bits);

}  // namespace vela::test

#endif
