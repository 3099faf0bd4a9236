// Pixels of three bytes, blue, green and red, as files and other libraries pack them.
#pragma once

#include <cstddef>
#include <string>
#include <zel/image.h>

namespace Zel {

constexpr std::size_t kPackedPixelSize = 3;

/// Unpacks `count` pixels, with alpha 255. Works from the last pixel backwards, so the packed ones may stand
/// at the start of the memory that they are unpacked to. Four pixels at a time, as `scalar::unpackPixels`
/// says.
void unpackPixels(unsigned char const* packed, std::size_t count, Color* pixels);

/// Packs `count` pixels, without alpha. Four pixels at a time, as `scalar::packPixels` says.
void packPixels(Color const* pixels, std::size_t count, unsigned char* packed);

/// The same, a pixel at a time.
namespace scalar {

inline void unpackPixels(unsigned char const* packed, std::size_t count, Color* pixels) {
    for (std::size_t i = count; i-- > 0;) {
        unsigned char const* const from = packed + i * kPackedPixelSize;
        pixels[i] = Color(from[2], from[1], from[0], 255);
    }
}

inline void packPixels(Color const* pixels, std::size_t count, unsigned char* packed) {
    for (std::size_t i = 0; i < count; ++i) {
        *packed++ = pixels[i].b;
        *packed++ = pixels[i].g;
        *packed++ = pixels[i].r;
    }
}

} // namespace scalar

/// The size of all pixels of an image, packed, in bytes. Throws FileException_WriteError when a file cannot
/// hold them and `extra` bytes more: its size is at most 2^31 - 1.
std::size_t packedSize(Image const& image, std::size_t extra, std::string const& fileName);

} // namespace Zel
