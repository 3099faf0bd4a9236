// Packing and unpacking, one pixel after the other.

#include "image/packed_pixels.h"

#include "image/dimensions.h"

namespace Zel {

void unpackPixels(unsigned char const* packed, std::size_t count, Color* pixels) {
    for (std::size_t i = count; i-- > 0;) {
        unsigned char const* const from = packed + i * kPackedPixelSize;
        pixels[i] = Color(from[2], from[1], from[0], 255);
    }
}

void packPixels(Color const* pixels, std::size_t count, unsigned char* packed) {
    for (std::size_t i = 0; i < count; ++i) {
        unsigned char* const to = packed + i * kPackedPixelSize;
        to[0] = pixels[i].b;
        to[1] = pixels[i].g;
        to[2] = pixels[i].r;
    }
}

std::size_t packedSize(Image const& image, std::string const& fileName) {
    std::size_t const size = pixelCount(image.getWidth(), image.getHeight()) * kPackedPixelSize;
    if (size > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
        throw FileException_WriteError(fileName.c_str());
    return size;
}

} // namespace Zel
