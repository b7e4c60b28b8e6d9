#ifndef VELA_NMS_ERROR_CODE_HPP
#define VELA_NMS_ERROR_CODE_HPP

#include <cstdint>

namespace vela::nms {

/// What the functions of vela::nms report.
enum class StatlibraryErrorCode : std::int32_t {
    Success = 0,
    InvalidEnumeration = 1,  ///< an enumerated argument is outside its set
    OutOfMemory = 2,
    InvalidSize = 3  ///< a negative count
};

}  // namespace vela::nms

#endif
