// Truevision TGA files.
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

#include "image/tga.h"

#include "core/little_endian.h"
#include "image/block_reader.h"
#include "image/dimensions.h"
#include "image/file_rows.h"
#include "image/packed_pixels.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace Zel {
namespace {

constexpr std::size_t kHeaderSize = 18;
using Header = std::array<unsigned char, kHeaderSize>;

constexpr int kEncoded = 8; ///< the image types that are run-length encoded have this bit
constexpr int kTopFirst = 32;

/// The memory that `Image::resize` takes for each pixel: the widest packed pixel that rows may have.
constexpr std::size_t kRoomPerPixel = 4 * sizeof(Color);

/// A run-length packet holds up to 128 pixels.
constexpr std::size_t kPacketPixels = 128;

/// So many pixels are no danger, even when the file has no bytes for them.
constexpr std::size_t kAlwaysFits = 1 << 20;

std::uint8_t expandFiveBits(int value) { return static_cast<std::uint8_t>(value << 3 | value >> 2); }

Color fromGrey(unsigned char const* packed) { return {packed[0], packed[0], packed[0], 255}; }

/// Meant: five bits become eight by repeating the upper ones, unlike in palette entries.
Color from16Bits(unsigned char const* packed) {
    int const value = littleEndian16(packed);
    return {expandFiveBits(value >> 10 & 31), expandFiveBits(value >> 5 & 31), expandFiveBits(value & 31),
            static_cast<std::uint8_t>((value & 0x8000) != 0 ? 255 : 0)};
}

/// Meant: five bits become eight by a plain shift, unlike in pixels.
Color entryFrom16Bits(unsigned char const* packed) {
    int const value = littleEndian16(packed);
    auto const shifted = [](int fiveBits) {
        return static_cast<std::uint8_t>((fiveBits & 31) << 3);
    };
    return {shifted(value >> 10), shifted(value >> 5), shifted(value), 255};
}

Color paletteEntry(unsigned char const* stored, std::size_t size) {
    switch (size) {
    case 1:
        return fromGrey(stored);
    case 2:
        return entryFrom16Bits(stored);
    default: // what a fourth byte says is not kept
        return {stored[2], stored[1], stored[0], 255};
    }
}

} // namespace

void TGALoader::load(Image& image, std::string const& fileName) {
    m_fileName = fileName;
    File file(fileName, File::READ);
    readHeader(file);
    if (m_width == 0 || m_height == 0)
        throw ImageException_IllegalDimensions(fileName.c_str(), m_width, m_height);
    choosePixelKind();
    pixelCount(m_width, m_height, fileName.c_str());
    file.setPosition(file.getPosition() + m_idLength);
    refuseImpossibleSize(file);

    image.resize(m_width, m_height);
    readColormap(file);
    if (isPixelOfItsKind())
        readPixels(file, image);
    else
        readPixelsInPlace(file, image.getData());
}

void TGALoader::readHeader(File& file) {
    Header header;
    file.read(header.data(), kHeaderSize);
    m_idLength = header[0];
    m_colormapType = header[1];
    m_type = header[2];
    m_firstEntry = littleEndian16(&header[3]);
    m_entries = littleEndian16(&header[5]);
    m_entryDepth = header[7];
    m_width = littleEndian16(&header[12]);
    m_height = littleEndian16(&header[14]);
    m_depth = header[16];
    m_topFirst = (header[17] & kTopFirst) != 0;

    m_bytesPerPixel = (static_cast<std::size_t>(m_depth) + 1) / 8;
    m_encoded = (m_type & kEncoded) != 0;
}

void TGALoader::choosePixelKind() {
    char const* const name = m_fileName.c_str();
    switch (m_type & ~kEncoded) {
    case 1:
        if (m_colormapType != 1)
            throw TGALoaderException_NoPalette(name);
        if (m_firstEntry + m_entries > static_cast<int>(m_palette.size()))
            throw TGALoaderException_TooManyColors(name);
        m_kind = PixelKind::Indexed; // Meant: the depth is not examined.
        break;
    case 2:
        if (m_depth == 15 || m_depth == 16)
            m_kind = PixelKind::Direct16;
        else if (m_depth == 24)
            m_kind = PixelKind::Direct24;
        else if (m_depth == 32)
            m_kind = PixelKind::Direct32;
        else
            throw TGALoaderException_TruecolorNot24Or32Bit(name);
        break;
    case 3:
        if (m_depth != 8)
            throw TGALoaderException_MonoNot8Bit(name);
        m_kind = PixelKind::Grey;
        break;
    default:
        throw ImageException_UnknownImageFormat(name);
    }
}

/// The bytes that the pixels take at least.
std::size_t TGALoader::fewestBytes() const {
    if (m_encoded)
        return pixels() / kPacketPixels * (1 + m_bytesPerPixel);
    if (m_bytesPerPixel == 0) // none, but then a header alone could ask for any memory
        return pixels() <= kAlwaysFits ? 0 : pixels() / kPacketPixels;
    return pixels() * m_bytesPerPixel;
}

/// Ends, before memory is taken, what reading would end later: the file is too short for its pixels, or they
/// are too wide for their room.
void TGALoader::refuseImpossibleSize(File const& file) {
    std::size_t const colormapSize =
        m_colormapType != 0 ? static_cast<std::size_t>(m_entries) * entrySize() : 0;
    auto const left = static_cast<std::size_t>(std::max(file.getSize() - file.getPosition(), 0));
    bool const tooWide = m_bytesPerPixel > kRoomPerPixel;
    if (!tooWide && colormapSize + fewestBytes() <= left)
        return;
    checkColormap();
    if (tooWide && colormapSize <= left)
        throw TGALoaderException_BadColormapDepth(m_fileName.c_str());
    throw FileException_ReadError(m_fileName.c_str());
}

void TGALoader::checkColormap() {
    if (m_colormapType == 0)
        return;
    if (m_firstEntry < 0)
        throw TGALoaderException_BadColormapStart(m_fileName.c_str());
    if (entrySize() < 1 || entrySize() > 4)
        throw TGALoaderException_BadColormapDepth(m_fileName.c_str());
}

void TGALoader::readColormap(File& file) {
    checkColormap();
    if (m_colormapType == 0)
        return;
    std::size_t const size = static_cast<std::size_t>(m_entries) * entrySize();
    if (!isColormapped()) {
        file.setPosition(file.getPosition() + static_cast<int>(size));
        return;
    }
    std::vector<unsigned char> stored(size);
    file.read(stored.data(), static_cast<int>(size));
    // Meant: palette pixels are opaque, whatever alpha their entry has, and black where there is no entry.
    for (std::size_t i = 0; i < stored.size() / entrySize(); ++i) {
        m_palette[static_cast<std::size_t>(m_firstEntry) + i] =
            paletteEntry(&stored[i * entrySize()], entrySize());
    }
}

void TGALoader::readPacketHeader(BlockReader& reader) {
    unsigned char const header = reader.readByte();
    m_packetLeft = static_cast<std::size_t>(header & 127) + 1;
    m_repeatPacket = (header & 128) != 0;
    if (m_repeatPacket)
        reader.read(m_repeated.data(), m_bytesPerPixel);
}

/// Takes a row's worth of pixels from packets: `repeat` emits the repeated pixel so many times, `read` as
/// many fresh ones.
template <class Repeat, class Read>
void TGALoader::decodeRow(BlockReader& reader, Repeat repeat, Read read) {
    for (auto left = static_cast<std::size_t>(m_width); left > 0;) {
        if (m_packetLeft == 0)
            readPacketHeader(reader);
        std::size_t const count = std::min(left, m_packetLeft);
        if (m_repeatPacket)
            repeat(count);
        else
            read(count);
        left -= count;
        m_packetLeft -= count;
    }
}

/// The usual case: each pixel has as many bytes as its kind takes.
void TGALoader::readPixels(File& file, Image& image) {
    auto const rowPixels = static_cast<std::size_t>(m_width);
    auto const rowAt = [&](int row) {
        return &image(0, placeOf(row));
    };
    if (!m_encoded) {
        Zel::readRows(file, rowSize(), m_height,
                      [&](int row, unsigned char const* packed) { convert(packed, rowPixels, rowAt(row)); });
        return;
    }
    BlockReader reader(file);
    std::array<unsigned char, kPacketPixels * kRoomPerPixel> bytes;
    for (int row = 0; row < m_height; ++row) {
        Color* to = rowAt(row);
        auto const repeat = [&](std::size_t count) {
            Color color;
            convert(m_repeated.data(), 1, &color);
            to = std::fill_n(to, count, color);
        };
        auto const read = [&](std::size_t count) {
            reader.read(bytes.data(), count * m_bytesPerPixel);
            convert(bytes.data(), count, to);
            to += count;
        };
        decodeRow(reader, repeat, read);
    }
}

void TGALoader::convert(unsigned char const* packed, std::size_t count, Color* pixels) const {
    switch (m_kind) {
    case PixelKind::Grey:
        for (std::size_t i = 0; i < count; ++i)
            pixels[i] = fromGrey(packed + i);
        break;
    case PixelKind::Indexed:
        for (std::size_t i = 0; i < count; ++i)
            pixels[i] = m_palette[packed[i]];
        break;
    case PixelKind::Direct16:
        for (std::size_t i = 0; i < count; ++i)
            pixels[i] = from16Bits(packed + 2 * i);
        break;
    case PixelKind::Direct24:
        unpackPixels(packed, count, pixels);
        break;
    case PixelKind::Direct32:
        std::memcpy(static_cast<void*>(pixels), packed, count * sizeof(Color));
        break;
    }
}

/// Palette pixels of another depth than 8. Meant: their bytes stand in the memory of the pixels, three of
/// each become four, and then the first bytes there are taken for the indices.
void TGALoader::readPixelsInPlace(File& file, Color* pixelData) {
    auto* const packed = reinterpret_cast<unsigned char*>(pixelData);
    BlockReader reader(file);
    for (int row = 0; row < m_height; ++row) {
        unsigned char* to = packed + static_cast<std::size_t>(placeOf(row)) * rowSize();
        if (!m_encoded) {
            file.read(to, static_cast<int>(rowSize()));
            continue;
        }
        auto const repeat = [&](std::size_t count) {
            for (; count > 0; --count)
                to = std::copy_n(m_repeated.data(), m_bytesPerPixel, to);
        };
        auto const read = [&](std::size_t count) {
            reader.read(to, count * m_bytesPerPixel);
            to += count * m_bytesPerPixel;
        };
        decodeRow(reader, repeat, read);
    }
    if (m_bytesPerPixel == kPackedPixelSize)
        unpackPixels(packed, pixels(), pixelData);
    // From the last one backwards, no index is overwritten before it was read.
    for (std::size_t i = pixels(); i-- > 0;)
        pixelData[i] = m_palette[packed[i]];
}

void TGASaver::save(Image const& image, std::string const& fileName) {
    std::size_t const size = packedSize(image, kHeaderSize, fileName);
    Header header{};
    header[2] = 2;
    putLittleEndian16(&header[12], static_cast<std::uint16_t>(image.getWidth()));
    putLittleEndian16(&header[14], static_cast<std::uint16_t>(image.getHeight()));
    header[16] = 24;
    header[17] = kTopFirst;

    File file(fileName, File::WRITE);
    file.write(header.data(), kHeaderSize);
    if (size > 0) {
        auto const rowPixels = static_cast<std::size_t>(image.getWidth());
        writeRows(file, rowPixels * kPackedPixelSize, image.getHeight(),
                  [&](int row, unsigned char* packed) { packPixels(&image(0, row), rowPixels, packed); });
    }
    file.flush(); // a full disk shows here at the latest, not in the destructor, which could not tell
}

} // namespace Zel
