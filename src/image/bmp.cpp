// BMP files of 24 bits a pixel.
//
//   offset  size  field
//        0     2  signature "BM"
//        2     4  file size                    written as header and pixels, ignored when read
//        6     4  reserved                     0
//       10     4  offset of the pixels         54
//       14     4  size of the info header      40, ignored
//       18     4  width
//       22     4  height
//       26     2  planes                       1, ignored
//       28     2  bits a pixel                 24
//       30     4  compression                  0, ignored
//       34     4  size of the pixels           with padding, ignored
//       38     8  pixels a metre, x and y      4619, ignored
//       46     8  colours used and important   0, ignored
//
// All numbers have the low byte first. The pixels go from the bottom row to the top one, blue, green, red.
// Meant: rows follow each other without padding, unlike in other BMP files. Padding to a multiple of four
// bytes comes once, after the last row.

#include "image/bmp.h"

#include "core/little_endian.h"
#include "image/dimensions.h"
#include "image/file_rows.h"
#include "image/packed_pixels.h"

#include <array>
#include <zel/file.h>

namespace Zel {
namespace {

constexpr std::size_t kHeaderSize = 54;
using Header = std::array<unsigned char, kHeaderSize>;

/// A file has this many bytes beside its pixels. Meant: all but the header are zeros after the pixels.
constexpr std::size_t kExtraSize = 4096;

constexpr std::uint32_t kPixelsPerMetre = 4619;

Header makeHeader(int width, int height, std::size_t paddedSize) {
    Header header{'B', 'M'};
    putLittleEndian32(&header[2], static_cast<std::uint32_t>(kHeaderSize + paddedSize));
    putLittleEndian32(&header[10], kHeaderSize);
    putLittleEndian32(&header[14], 40);
    putLittleEndian32(&header[18], static_cast<std::uint32_t>(width));
    putLittleEndian32(&header[22], static_cast<std::uint32_t>(height));
    putLittleEndian16(&header[26], 1);
    putLittleEndian16(&header[28], 24);
    putLittleEndian32(&header[34], static_cast<std::uint32_t>(paddedSize));
    putLittleEndian32(&header[38], kPixelsPerMetre);
    putLittleEndian32(&header[42], kPixelsPerMetre);
    return header;
}

void seekPixels(File& file, std::uint32_t offset) {
    if (offset > static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max()))
        throw FileException_SeekError(file.getFilename().c_str());
    file.setPosition(static_cast<int>(offset));
}

/// Throws when that many bytes do not follow in the file.
void requireLeft(File const& file, std::size_t size) {
    if (file.getPosition() + static_cast<std::int64_t>(size) > file.getSize())
        throw FileException_ReadError(file.getFilename().c_str());
}

} // namespace

void BMPLoader::load(Image& image, std::string const& fileName) {
    File file(fileName, File::READ);
    Header header{};
    file.read(header.data(), 2);
    if (header[0] != 'B' || header[1] != 'M')
        throw BMPLoaderException_NotBMPFile(fileName.c_str());
    file.read(&header[2], kHeaderSize - 2);
    if (littleEndian16(&header[28]) != 24)
        throw BMPLoaderException_UnsupportedColorDepth(fileName.c_str());

    auto const width = static_cast<std::int32_t>(littleEndian32(&header[18]));
    auto const height = static_cast<std::int32_t>(littleEndian32(&header[22]));
    seekPixels(file, littleEndian32(&header[10]));
    std::size_t const pixels = pixelCount(width, height, fileName.c_str());
    if (pixels > 0)
        requireLeft(file, pixels * kPackedPixelSize);
    image.resize(width, height);
    if (pixels == 0)
        return;

    auto const rowPixels = static_cast<std::size_t>(width);
    readRows(file, rowPixels * kPackedPixelSize, height, [&](int row, unsigned char const* packed) {
        unpackPixels(packed, rowPixels, &image(0, height - 1 - row));
    });
}

void BMPSaver::save(Image const& image, std::string const& fileName) {
    int const width = image.getWidth();
    std::size_t const rawSize = packedSize(image, kExtraSize, fileName);
    std::size_t const paddedSize = (rawSize + 3) / 4 * 4;

    File file(fileName, File::WRITE);
    Header const header = makeHeader(width, image.getHeight(), paddedSize);
    file.write(header.data(), kHeaderSize);
    if (rawSize > 0) {
        auto const rowPixels = static_cast<std::size_t>(width);
        writeRows(file, rowPixels * kPackedPixelSize, image.getHeight(), [&](int row, unsigned char* packed) {
            packPixels(&image(0, image.getHeight() - 1 - row), rowPixels, packed);
        });
    }
    std::array<unsigned char, kExtraSize - kHeaderSize> const zeros{};
    file.write(zeros.data(), static_cast<int>(zeros.size()));
    file.flush(); // a full disk shows here at the latest, not in the destructor, which could not tell
}

} // namespace Zel
