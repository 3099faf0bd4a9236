// PCX files of 256 colours: version 5, one plane, run-length encoded.
//
//      offset  size  field
//           0     1  manufacturer: 10
//           1     1  version: 5
//           2     1  encoding: not 0
//           4     2  x min
//           6     2  y min
//           8     2  x max             the width is x max - x min + 1
//          10     2  y max
//          65     1  planes: 1
//          66     2  bytes per line
//         128        encoded pixels
//  size - 769     1  12: a palette follows
//  size - 768   768  256 times red, green, blue
//
// The two-byte numbers are signed and have the low byte first.

#include "image/pcx.h"

#include "core/little_endian.h"
#include "image/dimensions.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <zel/file.h>

namespace Zel {
namespace {

constexpr std::size_t kHeaderSize = 128;
constexpr std::size_t kPaletteSize = 768;

/// No file can hold more pixels than this for each of its bytes: a run of two bytes has at most 63.
constexpr std::size_t kPixelsPerByte = 64;

/// `Image::resize` takes room for this many times the pixels. Lines longer than the width use some of it.
constexpr std::size_t kRoomFactor = 4;

class PCXFile {
public:
    explicit PCXFile(std::string const& name) : m_name(name), m_file(name) {}

    /// The checks in their order, each as far as the bytes are there.
    void check() const {
        if (size() < 1 || byte(0) != 10)
            throw PCXLoaderException_NotPCXFile(m_name.c_str());
        if ((size() > 1 && byte(1) != 5) || (size() > 65 && byte(65) != 1))
            throw PCXLoaderException_UnsupportedVersion(m_name.c_str());
        if (size() > 2 && byte(2) == 0)
            throw PCXLoaderException_NoEncoding(m_name.c_str());
        if (size() < kHeaderSize + 1 + kPaletteSize || byte(size() - kPaletteSize - 1) != 12)
            throw PCXLoaderException_NoPalette(m_name.c_str());
    }

    int width() const { return number(8) - number(4) + 1; }
    int height() const { return number(10) - number(6) + 1; }
    int bytesPerLine() const { return number(66); }
    std::size_t size() const { return static_cast<std::size_t>(m_file.getSize()); }

    std::array<Color, 256> palette() const {
        std::array<Color, 256> colors;
        std::size_t offset = size() - kPaletteSize;
        for (Color& color : colors) {
            color = Color(byte(offset), byte(offset + 1), byte(offset + 2), 255);
            offset += 3;
        }
        return colors;
    }

    /// The next byte of the encoded pixels.
    unsigned char next() {
        if (m_position >= size())
            throw FileException_ReadError(m_name.c_str());
        return byte(m_position++);
    }

private:
    unsigned char const* bytes() const { return static_cast<unsigned char const*>(m_file.getAddress()); }
    unsigned char byte(std::size_t offset) const { return bytes()[offset]; }
    int number(std::size_t offset) const {
        return static_cast<std::int16_t>(littleEndian16(bytes() + offset));
    }

    std::string const& m_name;
    MemoryFile m_file;
    std::size_t m_position = kHeaderSize;
};

/// Meant: each row takes bytes-per-line pixels, not width of them, and a run that passes the end of a line is
/// written whole; so whatever a line has too many shifts the rows after it.
void decode(PCXFile& file, Color* pixels, std::size_t room) {
    std::array<Color, 256> const palette = file.palette();
    Color* const end = pixels + room;
    int const bytesPerLine = file.bytesPerLine();
    int const height = file.height();
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < bytesPerLine;) {
            unsigned char const code = file.next();
            if (code < 0xC0) {
                if (pixels < end)
                    *pixels++ = palette[code];
                ++column;
                continue;
            }
            int const count = code & 63;
            Color const color = palette[file.next()];
            pixels = std::fill_n(pixels, std::min<std::ptrdiff_t>(count, end - pixels), color);
            column += count;
        }
    }
}

} // namespace

void PCXLoader::load(Image& image, std::string const& fileName) {
    PCXFile file(fileName);
    file.check();
    int const width = file.width();
    int const height = file.height();
    std::size_t const pixels = pixelCount(width, height, fileName.c_str());
    if (pixels > file.size() * kPixelsPerByte)
        throw ImageException_IllegalDimensions(fileName.c_str(), width, height);
    image.resize(width, height);
    if (pixels > 0)
        decode(file, image.getData(), pixels * kRoomFactor);
}

} // namespace Zel
