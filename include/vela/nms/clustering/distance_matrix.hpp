#ifndef VELA_NMS_CLUSTERING_DISTANCE_MATRIX_HPP
#define VELA_NMS_CLUSTERING_DISTANCE_MATRIX_HPP

#include "vela/api.hpp"
#include "vela/nms/error_code.hpp"
#include "vela/nms/types/missing_value_info.hpp"
#include "vela/nms/types/rectangular_array.hpp"

#include <cstdint>
#include <vector>

namespace vela::clustering {
struct MatrixAccess;
}

/// Distances between the rows or the columns of a table.
///
/// Both functions work under whatever floating-point state the caller left and give it back. An
/// entry is missing if it is NaN or ::MissingValue; with a @p missing object, if that says so. What
/// overflows becomes an infinite or NaN distance. Errors leave the matrix as it was: InvalidSize
/// for a negative number of rows or columns, OutOfMemory.
namespace vela::nms::clustering {

/// Symmetric matrix of distances with a zero diagonal; n (n - 1) / 2 numbers are kept.
class VELA_API DistanceMatrix {
public:
    /// No rows.
    DistanceMatrix() noexcept;
    DistanceMatrix(const DistanceMatrix& other);
    DistanceMatrix(DistanceMatrix&& other) noexcept;
    DistanceMatrix& operator=(const DistanceMatrix& other);
    DistanceMatrix& operator=(DistanceMatrix&& other) noexcept;
    ~DistanceMatrix();

    /// Makes this a matrix of @p rows rows with @p value everywhere but on the diagonal.
    /// @return InvalidSize for a negative count, OutOfMemory; then the matrix is as it was
    StatlibraryErrorCode Init(int rows, double value);

    /// The number of rows, which is that of columns.
    int RowCount() const;

    /// The distance; 0 on the diagonal, NaN for an index outside the matrix.
    double operator()(int row, int column) const;

    /// Sets the distance of the pair in either order. Ignored on the diagonal and outside.
    void Set(int row, int column, double distance);

private:
    friend struct vela::clustering::MatrixAccess;

    std::vector<double> m_values;  ///< the rows above the diagonal, one after another
    int m_rows = 0;
};

/// Kinds of distance between two observations x and y; sums run over the variables.
enum class DistanceEnums : std::int32_t {
    Euclidean = 2000,         ///< sqrt(sum (x - y)^2)
    Pearson = 2001,           ///< sqrt(sum (x - y)^2 / sample variance of the variable)
    Manhattan = 2002,         ///< sum |x - y|
    SquaredEuclidean = 2003,  ///< sum (x - y)^2
    SquaredPearson = 2004     ///< sum (x - y)^2 / sample variance of the variable
};

/// Distances between the observations (rows) of a table.
///
/// A pair with missing entries uses the variables that both rows have; the sum is scaled up by the
/// number of variables over the number used, and is NaN when none is. A variance is that of the
/// entries present; a variable without variation adds nothing.
///
/// @param out      becomes a matrix of rows.RowCount() rows
/// @param rows     the table; every entry is read once
/// @param kind     2000 to 2004; InvalidEnumeration for anything else
/// @param missing  which entries are missing; may be null
/// @accuracy each sum is formed in the order of the variables in double arithmetic: the relative
///           error stays below (columns + 4) 2^-53, plus that of the variances
VELA_API StatlibraryErrorCode
CreateForClusterObservations(DistanceMatrix& out, const types::IRectangularArray<double>& rows,
                             DistanceEnums kind, const types::IMissingValueInfo* missing = nullptr);

/// Distances between the variables (columns) of a table: 1 - r or 1 - |r|, r as
/// GetPearsonCorrelation() gives it.
///
/// A pair with missing entries uses the rows that both columns have. The distance is NaN where r
/// is: fewer than two such rows, or a variable that is constant over them.
///
/// @param out       becomes a matrix of rows.ColumnCount() rows
/// @param rows      the table; every entry is read once
/// @param absolute  true: 1 - |r|, so that opposite variables are close; false: 1 - r
/// @param missing   which entries are missing; may be null
VELA_API StatlibraryErrorCode
CreateForClusterVariables(DistanceMatrix& out, const types::IRectangularArray<double>& rows,
                          bool absolute, const types::IMissingValueInfo* missing = nullptr);

}  // namespace vela::nms::clustering

#endif
