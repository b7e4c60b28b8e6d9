#ifndef VELA_HYPOTHESIS_NONPARAMETRIC_PAIR_SUMS_HPP
#define VELA_HYPOTHESIS_NONPARAMETRIC_PAIR_SUMS_HPP

#include "descriptive/ordering.hpp"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

/// All sums of a row value and a column value, both ascending: the Walsh averages of a sample,
/// doubled, and the differences between two samples. They are never formed as a whole; a walk along
/// a threshold takes as many steps as there are rows and columns.
namespace vela::hypothesis {

/// Whether sums of it with finite values may be formed; of a sample that is not empty.
inline bool all_finite(const descriptive::SortedCopy& sample) {
    return std::isfinite(sample(1)) && std::isfinite(sample(sample.size()));
}

/// A view of the sums rows[i] + columns[j] of finite values: of one sample with itself for i <= j,
/// a triangle, or of every pair, a rectangle. A sum that overflows is an infinity.
class PairSums {
public:
    /// The sums x[i] + x[j], i <= j < n.
    static PairSums triangle(const double* x, std::uint32_t n) { return {x, n, x, n, true}; }

    /// The sums of n rows and m columns. rows[n] must be +infinity and columns[-1] -infinity, where
    /// a walk turns.
    static PairSums rectangle(const double* rows, std::uint32_t n, const double* columns,
                              std::uint32_t m) {
        return {rows, n, columns, m, false};
    }

    const double* rows() const { return m_rows; }
    const double* columns() const { return m_columns; }
    std::uint32_t row_count() const { return m_rowCount; }
    std::uint32_t column_count() const { return m_columnCount; }
    bool is_triangle() const { return m_isTriangle; }

    std::uint64_t size() const {
        const std::uint64_t n = m_rowCount;
        return m_isTriangle ? n * (n + 1) / 2 : n * m_columnCount;
    }
    /// Anti-diagonals.
    std::size_t step_count() const {
        return m_rowCount + (m_isTriangle ? 0 : std::size_t{m_columnCount});
    }

private:
    PairSums(const double* rows, std::uint32_t n, const double* columns, std::uint32_t m,
             bool isTriangle)
        : m_rows(rows),
          m_columns(columns),
          m_rowCount(n),
          m_columnCount(m),
          m_isTriangle(isTriangle) {}

    const double* m_rows;
    const double* m_columns;
    std::uint32_t m_rowCount;
    std::uint32_t m_columnCount;
    bool m_isTriangle;
};

/// An anti-diagonal of the table, where row and column both grow, so that the sums ascend.
struct AntiDiagonal {
    const double* rows;
    const double* columns;
    std::size_t shift;  // from row to column, modulo 2^64

    double operator[](std::size_t row) const { return rows[row] + columns[shift + row]; }
};

/// The number of sums that do not exceed each of T thresholds, which in a rectangle are below
/// +infinity.
///
/// From one anti-diagonal to the next the number of sums within a threshold grows by one or not, as
/// one comparison tells: the staircase of Johnson & Mizoguchi (1978), Selecting the kth element in
/// X + Y and X1 + ... + Xm, SIAM J. Comput. 7, without its branches. A step waits for the one
/// before, so several thresholds cost little more than one.
///
/// visit(step, diagonal, reached) is called on each anti-diagonal, on which the rows below
/// reached[t], from the first one on, are within threshold t.
template <std::size_t T, class Visit>
std::array<std::uint64_t, T> walk(const PairSums& sums, const std::array<double, T>& thresholds,
                                  Visit visit) {
    const std::size_t outside = sums.is_triangle() ? 0 : 1;
    AntiDiagonal diagonal{sums.rows(), sums.columns() - outside, sums.column_count() - 1 + outside};
    std::array<std::size_t, T> reached{};
    std::array<std::uint64_t, T> counts{};
    for (std::size_t step = 0; step < sums.step_count(); ++step) {
        for (std::size_t t = 0; t < T; ++t) {
            reached[t] += diagonal[reached[t]] <= thresholds[t] ? 1 : 0;
            counts[t] += reached[t];
        }
        visit(step, diagonal, reached);
        --diagonal.shift;
    }
    // In a rectangle the last anti-diagonals begin at rows 1, 2, ..., n.
    const std::uint64_t n = sums.row_count();
    for (std::uint64_t& count : counts) {
        count -= sums.is_triangle() ? 0 : n * (n + 1) / 2;
    }
    return counts;
}

template <std::size_t T>
std::array<std::uint64_t, T> count_at_most(const PairSums& sums,
                                           const std::array<double, T>& thresholds) {
    return walk(sums, thresholds, [](std::size_t, const AntiDiagonal&, const auto&) {});
}

/// The differences x[i] - y[j] of two sorted samples as sums, on copies of its own; false when they
/// could not be allocated.
class Differences {
public:
    Differences(const descriptive::SortedCopy& x, const descriptive::SortedCopy& y);

    explicit operator bool() const { return static_cast<bool>(m_buffer); }
    PairSums sums() const;

private:
    std::uint32_t m_rowCount;
    std::uint32_t m_columnCount;
    descriptive::WordBuffer m_buffer;
};

}  // namespace vela::hypothesis

#endif
