#include "clustering/containers.hpp"

#include "vela/nms/types/make_containers.hpp"

namespace vela::nms::types {
namespace {

template <class T>
bool is_buffer(const T* values, int rows, int columns) {
    return rows >= 0 && columns >= 0 && (values != nullptr || rows == 0 || columns == 0);
}

template <class T>
std::vector<T> copy_of(const T* values, int rows, int columns) {
    return {values, values + static_cast<std::ptrdiff_t>(rows) * columns};
}

template <class T>
IVector<T>* make_vector(const T* values, int count) {
    return is_buffer(values, count, 1) ? new vela::clustering::Vector<T>(copy_of(values, count, 1))
                                       : nullptr;
}

template <class T>
IReadableVector<T>* make_vector_over(const T* values, int count) {
    return is_buffer(values, count, 1) ? new vela::clustering::VectorOver<T>(values, count)
                                       : nullptr;
}

template <class T>
IRectangularArray<T>* make_array(const T* values, int rows, int columns) {
    return is_buffer(values, rows, columns) ? new vela::clustering::RectangularArray<T>(
                                                  copy_of(values, rows, columns), rows, columns)
                                            : nullptr;
}

template <class T>
IRectangularArray<T>* make_array_over(const T* values, int rows, int columns) {
    return is_buffer(values, rows, columns)
               ? new vela::clustering::RectangularArrayOver<T>(values, rows, columns)
               : nullptr;
}

}  // namespace

using clustering::ClusterStep;

IVector<double>* MakeVector(const double* values, int count) { return make_vector(values, count); }
IVector<int>* MakeVector(const int* values, int count) { return make_vector(values, count); }
IVector<ClusterStep>* MakeVector(const ClusterStep* values, int count) {
    return make_vector(values, count);
}

IReadableVector<double>* MakeVectorOver(const double* values, int count) {
    return make_vector_over(values, count);
}
IReadableVector<int>* MakeVectorOver(const int* values, int count) {
    return make_vector_over(values, count);
}
IReadableVector<ClusterStep>* MakeVectorOver(const ClusterStep* values, int count) {
    return make_vector_over(values, count);
}

void DeleteVector(IReadableVector<double>* vector) { delete vector; }
void DeleteVector(IReadableVector<int>* vector) { delete vector; }
void DeleteVector(IReadableVector<ClusterStep>* vector) { delete vector; }

IRectangularArray<double>* MakeRectangularArray(const double* values, int rows, int columns) {
    return make_array(values, rows, columns);
}
IRectangularArray<int>* MakeRectangularArray(const int* values, int rows, int columns) {
    return make_array(values, rows, columns);
}
IRectangularArray<ClusterStep>* MakeRectangularArray(const ClusterStep* values, int rows,
                                                     int columns) {
    return make_array(values, rows, columns);
}

IRectangularArray<double>* MakeRectangularArrayOver(const double* values, int rows, int columns) {
    return make_array_over(values, rows, columns);
}
IRectangularArray<int>* MakeRectangularArrayOver(const int* values, int rows, int columns) {
    return make_array_over(values, rows, columns);
}
IRectangularArray<ClusterStep>* MakeRectangularArrayOver(const ClusterStep* values, int rows,
                                                         int columns) {
    return make_array_over(values, rows, columns);
}

void DeleteRectangularArray(IRectangularArray<double>* array) { delete array; }
void DeleteRectangularArray(IRectangularArray<int>* array) { delete array; }
void DeleteRectangularArray(IRectangularArray<ClusterStep>* array) { delete array; }

}  // namespace vela::nms::types
