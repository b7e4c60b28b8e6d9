#ifndef VELA_NMS_TYPES_MISSING_VALUE_INFO_HPP
#define VELA_NMS_TYPES_MISSING_VALUE_INFO_HPP

#include "vela/api.hpp"

namespace vela::nms::types {

/// Says which numbers stand for a missing entry of a table.
class VELA_API IMissingValueInfo {
public:
    virtual ~IMissingValueInfo() = default;
    /// True when @p value is the mark of a missing entry.
    virtual bool IsMissing(double value) const = 0;

protected:
    IMissingValueInfo() = default;
    IMissingValueInfo(const IMissingValueInfo&) = default;
    IMissingValueInfo& operator=(const IMissingValueInfo&) = default;
};

}  // namespace vela::nms::types

#endif
