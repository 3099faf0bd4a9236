// The header of TGA files.
//
//   offset  size  field
//        0     1  length of the ID, which follows the header and is skipped
//        1     1  colour map type: 0 = none
//        2     1  image type: 1 palette, 2 true colour, 3 grey; 9, 10, 11 the same, run-length encoded
//        3     2  first entry of the colour map
//        5     2  entries in the colour map
//        7     1  bits of each entry
//        8     4  origin, ignored
//       12     2  width
//       14     2  height
//       16     1  bits of each pixel
//       17     1  descriptor: bit 5 set when the first row is the top one; the rest is ignored
//
// All numbers have the low byte first. ID, colour map and pixels follow.
#pragma once

#include "core/little_endian.h"

#include <array>
#include <cstddef>

namespace Zel {

struct TgaHeader {
    static constexpr std::size_t kSize = 18;
    using Bytes = std::array<unsigned char, kSize>;

    int idLength = 0;
    int colormapType = 0;
    int type = 0;
    int firstEntry = 0;
    int entries = 0;
    int entryDepth = 0;
    int width = 0;
    int height = 0;
    int depth = 0;
    bool topFirst = false;

    /// The image type without the bit that tells of run-length encoding.
    int plainType() const { return type & ~kEncodedBit; }
    bool isEncoded() const { return (type & kEncodedBit) != 0; }

    std::size_t bytesPerPixel() const { return bytesOf(depth); }
    std::size_t rowSize() const { return static_cast<std::size_t>(width) * bytesPerPixel(); }
    std::size_t pixels() const { return static_cast<std::size_t>(width) * static_cast<std::size_t>(height); }
    /// The row of the image, counted from the top, that a row of the file becomes.
    int imageRow(int fileRow) const { return topFirst ? fileRow : height - 1 - fileRow; }

    std::size_t entrySize() const { return bytesOf(entryDepth); }
    std::size_t colormapSize() const {
        return colormapType != 0 ? static_cast<std::size_t>(entries) * entrySize() : 0;
    }

    static TgaHeader fromBytes(Bytes const& bytes) {
        return {.idLength = bytes[0],
                .colormapType = bytes[1],
                .type = bytes[2],
                .firstEntry = littleEndian16(&bytes[3]),
                .entries = littleEndian16(&bytes[5]),
                .entryDepth = bytes[7],
                .width = littleEndian16(&bytes[12]),
                .height = littleEndian16(&bytes[14]),
                .depth = bytes[16],
                .topFirst = (bytes[17] & kTopFirstBit) != 0};
    }

    /// Of a file without ID and colour map. Meant: sizes keep their lower 16 bits only.
    Bytes toBytes() const {
        Bytes bytes{};
        bytes[2] = static_cast<unsigned char>(type);
        putLittleEndian16(&bytes[12], static_cast<std::uint16_t>(width));
        putLittleEndian16(&bytes[14], static_cast<std::uint16_t>(height));
        bytes[16] = static_cast<unsigned char>(depth);
        bytes[17] = topFirst ? kTopFirstBit : 0;
        return bytes;
    }

private:
    static constexpr int kEncodedBit = 8;
    static constexpr int kTopFirstBit = 32;

    static std::size_t bytesOf(int bits) { return (static_cast<std::size_t>(bits) + 1) / 8; }
};

} // namespace Zel
