#ifndef VELA_NMS_TYPES_RECTANGULAR_ARRAY_HPP
#define VELA_NMS_TYPES_RECTANGULAR_ARRAY_HPP

#include "vela/api.hpp"

namespace vela::nms::types {

/// A table that its holder may read: observations in rows, variables in columns. A host may
/// implement it over its own storage.
template <class T>
class VELA_API IRectangularArray {
public:
    virtual ~IRectangularArray() = default;
    /// The number of observations.
    virtual int RowCount() const = 0;
    /// The number of variables.
    virtual int ColumnCount() const = 0;
    /// @param row     0 to RowCount() - 1; not checked
    /// @param column  0 to ColumnCount() - 1; not checked
    virtual T operator()(int row, int column) const = 0;

protected:
    IRectangularArray() = default;
    IRectangularArray(const IRectangularArray&) = default;
    IRectangularArray& operator=(const IRectangularArray&) = default;
};

}  // namespace vela::nms::types

#endif
