#ifndef VELA_NMS_TYPES_SHARED_PTR_HPP
#define VELA_NMS_TYPES_SHARED_PTR_HPP

#include <memory>

namespace vela::nms::types {

/// Shared ownership of a container or of any other object.
template <class T>
using SharedPtr = std::shared_ptr<T>;

}  // namespace vela::nms::types

#endif
