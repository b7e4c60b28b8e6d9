#ifndef VELA_CLUSTERING_CONTAINERS_HPP
#define VELA_CLUSTERING_CONTAINERS_HPP

#include "vela/nms/types/rectangular_array.hpp"
#include "vela/nms/types/vector.hpp"

#include <cstddef>
#include <new>
#include <stdexcept>
#include <utility>
#include <vector>

/// The library's own containers. None is known to a host but through its interface.
namespace vela::clustering {

using nms::StatlibraryErrorCode;

/// `count` copies of `value`, or the old elements when memory runs out.
template <class T>
StatlibraryErrorCode assign_or_keep(std::vector<T>* values, std::size_t count, const T& value) {
    const T copy = value;  // it may be one of the elements
    try {
        if (count <= values->capacity()) {
            values->assign(count, copy);
        } else {
            std::vector<T>(count, copy).swap(*values);
        }
    } catch (const std::bad_alloc&) {
        return StatlibraryErrorCode::OutOfMemory;
    } catch (const std::length_error&) {
        return StatlibraryErrorCode::OutOfMemory;
    }
    return StatlibraryErrorCode::Success;
}

template <class T>
class Vector final : public nms::types::IVector<T> {
public:
    explicit Vector(std::vector<T> values) : m_values(std::move(values)) {}

    int size() const override { return static_cast<int>(m_values.size()); }
    const T& operator[](int index) const override {
        return m_values[static_cast<std::size_t>(index)];
    }
    T& operator[](int index) override { return m_values[static_cast<std::size_t>(index)]; }
    StatlibraryErrorCode assign(int count, const T& value) override {
        if (count < 0) {
            return StatlibraryErrorCode::InvalidSize;
        }
        return assign_or_keep(&m_values, static_cast<std::size_t>(count), value);
    }

    /// For the function that makes the vector and fills it.
    std::vector<T>& values() { return m_values; }

private:
    std::vector<T> m_values;
};

template <class T>
class VectorOver final : public nms::types::IReadableVector<T> {
public:
    VectorOver(const T* values, int count) : m_values(values), m_count(count) {}

    int size() const override { return m_count; }
    const T& operator[](int index) const override { return m_values[index]; }

private:
    const T* m_values;
    int m_count;
};

template <class T>
class RectangularArrayOver : public nms::types::IRectangularArray<T> {
public:
    RectangularArrayOver(const T* values, int rows, int columns)
        : m_values(values), m_rows(rows), m_columns(columns) {}

    int RowCount() const final { return m_rows; }
    int ColumnCount() const final { return m_columns; }
    T operator()(int row, int column) const final {
        return m_values[static_cast<std::ptrdiff_t>(row) * m_columns + column];
    }

private:
    const T* m_values;
    int m_rows;
    int m_columns;
};

/// The base reads the buffer of `values`, which moves along with it.
template <class T>
class RectangularArray final : public RectangularArrayOver<T> {
public:
    RectangularArray(std::vector<T> values, int rows, int columns)
        : RectangularArrayOver<T>(values.data(), rows, columns), m_values(std::move(values)) {}

private:
    std::vector<T> m_values;
};

}  // namespace vela::clustering

#endif
