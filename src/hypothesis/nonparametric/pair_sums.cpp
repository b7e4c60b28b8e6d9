#include "hypothesis/nonparametric/pair_sums.hpp"

#include <algorithm>
#include <limits>

namespace vela::hypothesis {

Differences::Differences(const descriptive::SortedCopy& x, const descriptive::SortedCopy& y)
    : m_rowCount(x.size()),
      m_columnCount(y.size()),
      m_buffer(std::size_t{x.size()} + y.size() + 2) {
    if (!m_buffer) {
        return;
    }
    double* next = std::copy_n(x.values(), x.size(), m_buffer.doubles());
    *next++ = std::numeric_limits<double>::infinity();
    *next++ = -std::numeric_limits<double>::infinity();
    for (std::uint32_t k = y.size(); k > 0; --k) {
        *next++ = -y(k);
    }
}

PairSums Differences::sums() const {
    const double* rows = m_buffer.doubles();
    return PairSums::rectangle(rows, m_rowCount, rows + m_rowCount + 2, m_columnCount);
}

}  // namespace vela::hypothesis
