// Which sizes of JPEG pictures are decoded.
#pragma once

#include "platform/platform.h"

#include <limits>

namespace Zel::platform {

/// `Done` when a file of `length` bytes can hold the picture: in Huffman coding each 8 x 8 pixels take one
/// bit at least. Arithmetic coding, which hardly anything writes, can take less, and is refused then.
inline JpegResult checkJpegSize(JpegPicture const& picture, std::int64_t length) {
    constexpr std::int64_t kPixelsPerByte = 512;
    std::int64_t const pixels = std::int64_t{picture.width} * picture.height;
    if (pixels > std::numeric_limits<std::int32_t>::max())
        return JpegResult::TooManyPixels;
    return pixels / kPixelsPerByte <= length ? JpegResult::Done : JpegResult::Failed;
}

} // namespace Zel::platform
