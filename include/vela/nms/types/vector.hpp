#ifndef VELA_NMS_TYPES_VECTOR_HPP
#define VELA_NMS_TYPES_VECTOR_HPP

#include "vela/api.hpp"
#include "vela/nms/error_code.hpp"

namespace vela::nms::types {

/// A sequence that its holder may read. The holder of a vector that a function returned deletes it,
/// through this interface or with DeleteVector().
template <class T>
class VELA_API IReadableVector {
public:
    virtual ~IReadableVector() = default;
    /// The number of elements.
    virtual int size() const = 0;
    /// @param index  0 to size() - 1; not checked
    virtual const T& operator[](int index) const = 0;

protected:
    IReadableVector() = default;
    IReadableVector(const IReadableVector&) = default;
    IReadableVector& operator=(const IReadableVector&) = default;
};

/// A sequence that its holder may change.
template <class T>
class VELA_API IVector : public IReadableVector<T> {
public:
    using IReadableVector<T>::operator[];
    /// @param index  0 to size() - 1; not checked
    virtual T& operator[](int index) = 0;

    /// Makes the sequence @p count copies of @p value, which may be one of its own elements.
    /// @return InvalidSize for a negative count, OutOfMemory; then the sequence is as it was
    virtual StatlibraryErrorCode assign(int count, const T& value) = 0;
};

}  // namespace vela::nms::types

#endif
