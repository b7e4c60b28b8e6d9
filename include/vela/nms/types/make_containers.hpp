#ifndef VELA_NMS_TYPES_MAKE_CONTAINERS_HPP
#define VELA_NMS_TYPES_MAKE_CONTAINERS_HPP

#include "vela/api.hpp"
#include "vela/nms/clustering/cluster_step.hpp"
#include "vela/nms/types/rectangular_array.hpp"
#include "vela/nms/types/vector.hpp"

/// Ready-made containers of double, int and ClusterStep.
///
/// Each Make function returns a new object that the caller ends with the Delete function of its
/// kind or through its virtual destructor, and a null pointer for a negative count or for a null
/// buffer where elements are expected. std::bad_alloc is thrown when memory runs out.
namespace vela::nms::types {

/// A vector that holds its own copy of @p count elements.
/// @{
VELA_API IVector<double>* MakeVector(const double* values, int count);
VELA_API IVector<int>* MakeVector(const int* values, int count);
VELA_API IVector<clustering::ClusterStep>* MakeVector(const clustering::ClusterStep* values,
                                                      int count);
/// @}

/// A vector that reads the caller's @p values, which must outlive it.
/// @{
VELA_API IReadableVector<double>* MakeVectorOver(const double* values, int count);
VELA_API IReadableVector<int>* MakeVectorOver(const int* values, int count);
VELA_API IReadableVector<clustering::ClusterStep>* MakeVectorOver(
    const clustering::ClusterStep* values, int count);
/// @}

/// Null is allowed, as it is in a delete expression.
/// @{
VELA_API void DeleteVector(IReadableVector<double>* vector);
VELA_API void DeleteVector(IReadableVector<int>* vector);
VELA_API void DeleteVector(IReadableVector<clustering::ClusterStep>* vector);
/// @}

/// A table that holds its own copy of @p values, which stand row after row.
/// @{
VELA_API IRectangularArray<double>* MakeRectangularArray(const double* values, int rows,
                                                         int columns);
VELA_API IRectangularArray<int>* MakeRectangularArray(const int* values, int rows, int columns);
VELA_API IRectangularArray<clustering::ClusterStep>* MakeRectangularArray(
    const clustering::ClusterStep* values, int rows, int columns);
/// @}

/// A table that reads the caller's @p values, which stand row after row and must outlive it.
/// @{
VELA_API IRectangularArray<double>* MakeRectangularArrayOver(const double* values, int rows,
                                                             int columns);
VELA_API IRectangularArray<int>* MakeRectangularArrayOver(const int* values, int rows, int columns);
VELA_API IRectangularArray<clustering::ClusterStep>* MakeRectangularArrayOver(
    const clustering::ClusterStep* values, int rows, int columns);
/// @}

/// Null is allowed.
/// @{
VELA_API void DeleteRectangularArray(IRectangularArray<double>* array);
VELA_API void DeleteRectangularArray(IRectangularArray<int>* array);
VELA_API void DeleteRectangularArray(IRectangularArray<clustering::ClusterStep>* array);
/// @}

}  // namespace vela::nms::types

#endif
