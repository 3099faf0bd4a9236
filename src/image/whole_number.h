// From floating-point positions to whole ones.
#pragma once

#include <cstdint>
#include <limits>

namespace Zel {

/// The value truncated toward zero. What 32 bits cannot hold becomes the nearest number that they can; NaN
/// becomes 0.
inline std::int32_t truncated(float value) {
    if (value >= 0x1p31F)
        return std::numeric_limits<std::int32_t>::max();
    if (value <= -0x1p31F)
        return std::numeric_limits<std::int32_t>::min();
    return value == value ? static_cast<std::int32_t>(value) : 0;
}

} // namespace Zel
