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
#include "image/run.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <zel/file.h>

namespace Zel {
namespace {

constexpr std::size_t kHeaderSize = 128;
constexpr std::size_t kPaletteSize = 768;

constexpr int kRunCode = 0xC0; ///< a byte from here on is the length of a run

/// A file has fewer pixels than this for each of its bytes: a run of two bytes has at most 63.
constexpr std::size_t kPixelsPerByte = 64;

/// `Image::resize` allocates this many times the pixels. Lines longer than the width use the room behind
/// them.
constexpr std::size_t kRoomFactor = 4;

class PCXFile {
public:
    explicit PCXFile(std::string const& name)
        : m_name(name),
          m_file(name),
          m_bytes(static_cast<unsigned char const*>(m_file.getAddress())),
          m_size(static_cast<std::size_t>(m_file.getSize())) {}

    /// The checks in their order. Of a file that is too short, the bytes that are there are checked first.
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
    std::size_t size() const { return m_size; }

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
    unsigned char byte(std::size_t offset) const { return m_bytes[offset]; }
    int number(std::size_t offset) const {
        return static_cast<std::int16_t>(littleEndian16(m_bytes + offset));
    }

    std::string const& m_name;
    MemoryFile m_file;
    unsigned char const* m_bytes;
    std::size_t m_size;
    std::size_t m_position = kHeaderSize;
};

/// Writes pixels one after another. Those beyond the room are dropped.
class PixelWriter {
public:
    /// At least `expected` pixels will be written, unless reading fails.
    PixelWriter(Color* pixels, std::size_t room, std::size_t expected)
        : m_next(pixels), m_end(pixels + room), m_endOfBlocks(pixels + std::min(room, expected)) {}

    void add(Color color) {
        if (m_next < m_end)
            *m_next++ = color;
    }

    void addRun(Color const& color, std::ptrdiff_t count) {
        if (m_endOfBlocks - m_next < count + std::ptrdiff_t{kBehindRun}) {
            m_next = std::fill_n(m_next, std::min(count, m_end - m_next), color);
            return;
        }
        writeRun(m_next, static_cast<std::size_t>(count), color); // later pixels will be written behind it
        m_next += count;
    }

private:
    Color* m_next;
    Color* m_end;
    Color* m_endOfBlocks;
};

/// Meant: each row takes bytes-per-line pixels instead of `width`, and a run that passes the end of a line is
/// written whole. So pixels that a line has too many shift the rows after it.
void decode(PCXFile& file, Color* pixels, std::size_t room) {
    std::array<Color, 256> const palette = file.palette();
    int const bytesPerLine = std::max(file.bytesPerLine(), 0);
    int const height = file.height();
    PixelWriter writer(pixels, room,
                       static_cast<std::size_t>(bytesPerLine) * static_cast<std::size_t>(height));
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < bytesPerLine;) {
            unsigned char const code = file.next();
            if (code < kRunCode) {
                writer.add(palette[code]);
                ++column;
            } else {
                int const count = code - kRunCode;
                writer.addRun(palette[file.next()], count);
                column += count;
            }
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
