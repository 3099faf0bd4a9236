// Pixels of three bytes, blue, green and red, as files and other libraries pack them.
#pragma once

#include <cstddef>
#include <string>
#include <zel/image.h>

namespace Zel {

constexpr std::size_t kPackedPixelSize = 3;

/// Unpacks `count` pixels, with alpha 255. Works from the last pixel backwards, so that the packed ones may
/// stand at the start of the memory they are unpacked to.
void unpackPixels(unsigned char const* packed, std::size_t count, Color* pixels);

/// Packs `count` pixels, without alpha.
void packPixels(Color const* pixels, std::size_t count, unsigned char* packed);

/// The bytes of all pixels, packed for a file that has `extra` bytes beside them. Throws
/// FileException_WriteError when no file can hold all that.
std::size_t packedSize(Image const& image, std::size_t extra, std::string const& fileName);

} // namespace Zel
