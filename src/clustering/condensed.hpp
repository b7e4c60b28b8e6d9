#ifndef VELA_CLUSTERING_CONDENSED_HPP
#define VELA_CLUSTERING_CONDENSED_HPP

#include "vela/nms/clustering/distance_matrix.hpp"

#include <cstddef>

namespace vela::clustering {

/// Two rows or clusters.
struct Pair {
    int lo;
    int hi;
    double distance;
};

/// Number of pairs among `rows` rows.
inline std::size_t pair_count(int rows) {
    const auto n = static_cast<std::size_t>(rows);
    return n < 2 ? 0 : n * (n - 1) / 2;
}

/// Where d(i, j), i < j, stands among the pairs of `rows` rows, less j. For each row i, the
/// distances to the rows j > i lie in a row. 64 bits: 65537 rows already have more than 2^31 pairs.
inline std::ptrdiff_t row_offset(int rows, int i) {
    const std::ptrdiff_t row = i;
    return row * (2 * static_cast<std::ptrdiff_t>(rows) - row - 3) / 2 - 1;
}

/// Where d(i, j) of two different rows stands.
inline std::size_t pair_index(int rows, int i, int j) {
    return static_cast<std::size_t>(i < j ? row_offset(rows, i) + j : row_offset(rows, j) + i);
}

/// The distances of a matrix as they lie in memory.
class Condensed {
public:
    Condensed(double* values, int rows) : m_values(values), m_rows(rows) {}

    int rows() const { return m_rows; }
    double* values() const { return m_values; }

    /// d(i, j), i < j, is values()[offset(i) + j].
    std::ptrdiff_t offset(int i) const { return row_offset(m_rows, i); }

    /// The distance of two different rows.
    double& at(int i, int j) const { return m_values[pair_index(m_rows, i, j)]; }

private:
    double* m_values;
    int m_rows;
};

/// Asks for what will be needed soon, where the processor does not expect it.
inline void prefetch(const double* address) {
#if defined(__GNUC__)
    __builtin_prefetch(address);
#else
    static_cast<void>(address);
#endif
}

/// The one way into a DistanceMatrix that does not check its indices.
struct MatrixAccess {
    static Condensed condensed(nms::clustering::DistanceMatrix& matrix) {
        return {matrix.m_values.data(), matrix.m_rows};
    }
};

}  // namespace vela::clustering

#endif
