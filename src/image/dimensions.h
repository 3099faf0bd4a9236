// The sizes that images can have.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <zel/image.h>

namespace Zel {

/// The number of pixels of an image of this size: 0 when a side is 0 or below. Throws
/// ImageException_IllegalDimensions, which names the file, when it is above 2^31 - 1.
inline std::size_t pixelCount(int width, int height, char const* fileName = "") {
    if (width <= 0 || height <= 0)
        return 0;
    std::int64_t const pixels = std::int64_t{width} * height;
    if (pixels > std::numeric_limits<std::int32_t>::max())
        throw ImageException_IllegalDimensions(fileName, width, height);
    return static_cast<std::size_t>(pixels);
}

} // namespace Zel
