#include "vela/nms/clustering/distance_matrix.hpp"

#include "clustering/condensed.hpp"
#include "clustering/containers.hpp"
#include "conventions/quiet_nan.hpp"

#include <utility>

namespace vela::nms::clustering {

DistanceMatrix::DistanceMatrix() noexcept = default;
DistanceMatrix::DistanceMatrix(const DistanceMatrix& other) = default;
DistanceMatrix::~DistanceMatrix() = default;

DistanceMatrix::DistanceMatrix(DistanceMatrix&& other) noexcept
    : m_values(std::exchange(other.m_values, {})), m_rows(std::exchange(other.m_rows, 0)) {}

// By way of a copy: a failed allocation must not leave the rows of one matrix with the values of
// another.
DistanceMatrix& DistanceMatrix::operator=(const DistanceMatrix& other) {
    return *this = DistanceMatrix(other);
}

DistanceMatrix& DistanceMatrix::operator=(DistanceMatrix&& other) noexcept {
    m_values.swap(other.m_values);
    std::swap(m_rows, other.m_rows);
    return *this;
}

StatlibraryErrorCode DistanceMatrix::Init(int rows, double value) {
    if (rows < 0) {
        return StatlibraryErrorCode::InvalidSize;
    }
    const StatlibraryErrorCode code =
        vela::clustering::assign_or_keep(&m_values, vela::clustering::pair_count(rows), value);
    if (code == StatlibraryErrorCode::Success) {
        m_rows = rows;
    }
    return code;
}

int DistanceMatrix::RowCount() const { return m_rows; }

double DistanceMatrix::operator()(int row, int column) const {
    if (row < 0 || column < 0 || row >= m_rows || column >= m_rows) {
        return conventions::kNaN;
    }
    if (row == column) {
        return 0.0;
    }
    return m_values[vela::clustering::pair_index(m_rows, row, column)];
}

void DistanceMatrix::Set(int row, int column, double distance) {
    if (row >= 0 && column >= 0 && row < m_rows && column < m_rows && row != column) {
        m_values[vela::clustering::pair_index(m_rows, row, column)] = distance;
    }
}

}  // namespace vela::nms::clustering
