// Truevision TGA files: image/tga_header.h tells their layout.

#include "image/tga.h"

#include "image/dimensions.h"
#include "image/file_rows.h"
#include "image/packed_pixels.h"
#include "image/packet_reader.h"
#include "image/run.h"
#include "image/tga_header.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace Zel {
namespace {

using Palette = std::array<Color, 256>;

enum class PixelKind { Grey, Indexed, Direct16, Direct24, Direct32 };

/// The memory that `Image::resize` takes for each pixel: the widest packed pixel that rows may have.
constexpr std::size_t kRoomPerPixel = 4 * sizeof(Color);
static_assert(kRoomPerPixel <= PacketReader::kWidestPixel);

/// So many pixels are loaded even when the file has no bytes for them.
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
    default: // a fourth byte is ignored
        return {stored[2], stored[1], stored[0], 255};
    }
}

TgaHeader readHeader(File& file) {
    TgaHeader::Bytes bytes;
    file.read(bytes.data(), static_cast<int>(bytes.size()));
    return TgaHeader::fromBytes(bytes);
}

/// Throws when the header does not fit its image type.
PixelKind pixelKind(TgaHeader const& header, char const* fileName) {
    switch (header.plainType()) {
    case 1:
        if (header.colormapType != 1)
            throw TGALoaderException_NoPalette(fileName);
        if (header.firstEntry + header.entries > static_cast<int>(Palette().size()))
            throw TGALoaderException_TooManyColors(fileName);
        return PixelKind::Indexed; // Meant: the depth is not examined.
    case 2:
        switch (header.depth) {
        case 15:
        case 16:
            return PixelKind::Direct16;
        case 24:
            return PixelKind::Direct24;
        case 32:
            return PixelKind::Direct32;
        default:
            throw TGALoaderException_TruecolorNot24Or32Bit(fileName);
        }
    case 3:
        if (header.depth != 8)
            throw TGALoaderException_MonoNot8Bit(fileName);
        return PixelKind::Grey;
    default:
        throw ImageException_UnknownImageFormat(fileName);
    }
}

void checkColormap(TgaHeader const& header, char const* fileName) {
    if (header.colormapType == 0)
        return;
    if (header.firstEntry < 0)
        throw TGALoaderException_BadColormapStart(fileName);
    if (header.entrySize() < 1 || header.entrySize() > 4)
        throw TGALoaderException_BadColormapDepth(fileName);
}

/// The bytes that the pixels take at least.
std::size_t fewestBytes(TgaHeader const& header) {
    std::size_t const pixels = header.pixels();
    std::size_t const fewestPackets = pixels / PacketReader::kMostPixels;
    if (header.isEncoded())
        return fewestPackets * (1 + header.bytesPerPixel());
    if (header.bytesPerPixel() == 0) // none; but a file of a header alone must not get any memory it asks for
        return pixels <= kAlwaysFits ? 0 : fewestPackets;
    return pixels * header.bytesPerPixel();
}

/// Throws, before memory is allocated, what reading would throw later: when the file is too short for its
/// pixels, or they are too wide for their room.
void refuseImpossibleSize(TgaHeader const& header, File const& file) {
    char const* const fileName = file.getFilename().c_str();
    auto const left = static_cast<std::size_t>(std::max(file.getSize() - file.getPosition(), 0));
    bool const tooWide = header.bytesPerPixel() > kRoomPerPixel;
    if (!tooWide && header.colormapSize() + fewestBytes(header) <= left)
        return;
    checkColormap(header, fileName);
    if (tooWide && header.colormapSize() <= left)
        throw TGALoaderException_BadColormapDepth(fileName);
    throw FileException_ReadError(fileName);
}

/// The colour of each index: opaque black when the file has no entry for it. Meant: entries are opaque,
/// whatever alpha is stored.
Palette readColormap(TgaHeader const& header, File& file) {
    checkColormap(header, file.getFilename().c_str());
    Palette palette{};
    if (header.plainType() != 1) {
        file.setPosition(file.getPosition() + static_cast<int>(header.colormapSize()));
        return palette;
    }
    std::vector<unsigned char> stored(header.colormapSize());
    file.read(stored.data(), static_cast<int>(stored.size()));
    Color* entry = palette.data() + header.firstEntry;
    for (std::size_t offset = 0; offset < stored.size(); offset += header.entrySize())
        *entry++ = paletteEntry(&stored[offset], header.entrySize());
    return palette;
}

/// A single pixel: `convert` would leave it in memory, from where a run takes it back late.
Color converted(PixelKind kind, Palette const& palette, unsigned char const* packed) {
    switch (kind) {
    case PixelKind::Grey:
        return fromGrey(packed);
    case PixelKind::Indexed:
        return palette[packed[0]];
    case PixelKind::Direct16:
        return from16Bits(packed);
    case PixelKind::Direct24:
        return {packed[2], packed[1], packed[0], 255};
    default: // Direct32
        return {packed[2], packed[1], packed[0], packed[3]};
    }
}

void convert(PixelKind kind, Palette const& palette, unsigned char const* packed, std::size_t count,
             Color* pixels) {
    switch (kind) {
    case PixelKind::Grey:
        for (std::size_t i = 0; i < count; ++i)
            pixels[i] = fromGrey(packed + i);
        break;
    case PixelKind::Indexed:
        for (std::size_t i = 0; i < count; ++i)
            pixels[i] = palette[packed[i]];
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

void readPixels(TgaHeader const& header, PixelKind kind, Palette const& palette, File& file, Image& image) {
    auto const rowPixels = static_cast<std::size_t>(header.width);
    auto const rowAt = [&](int fileRow) {
        return &image(0, header.imageRow(fileRow));
    };
    if (!header.isEncoded()) {
        readRows(file, header.rowSize(), header.height, [&](int row, unsigned char const* packed) {
            convert(kind, palette, packed, rowPixels, rowAt(row));
        });
        return;
    }
    PacketReader packets(file, header.bytesPerPixel());
    for (int row = 0; row < header.height; ++row) {
        Color* to = rowAt(row);
        for (std::size_t left = rowPixels; left > 0;) {
            auto const part = packets.next(left);
            if (!part.isRepeated)
                convert(kind, palette, part.bytes, part.count, to);
            else if (left - part.count < kBehindRun)
                std::fill_n(to, part.count, converted(kind, palette, part.bytes));
            else // later pixels of the row will be written behind it
                writeRun(to, part.count, converted(kind, palette, part.bytes));
            to += part.count;
            left -= part.count;
        }
    }
}

/// Indices of another depth than 8. Meant: the packed rows are read into the memory of the pixels; if they
/// have three bytes a pixel, these become four-byte pixels; then the first bytes of the memory are the
/// indices.
void readIndicesInPlace(TgaHeader const& header, Palette const& palette, File& file, Color* pixels) {
    auto* const packed = reinterpret_cast<unsigned char*>(pixels);
    PacketReader packets(file, header.bytesPerPixel());
    for (int row = 0; row < header.height; ++row) {
        unsigned char* to = packed + static_cast<std::size_t>(header.imageRow(row)) * header.rowSize();
        if (!header.isEncoded())
            file.read(to, static_cast<int>(header.rowSize()));
        else
            for (int x = 0; x < header.width; ++x)
                to = std::copy_n(packets.next(1).bytes, header.bytesPerPixel(), to);
    }
    if (header.bytesPerPixel() == kPackedPixelSize)
        unpackPixels(packed, header.pixels(), pixels);
    // Backwards, as a pixel overwrites the indices behind its own.
    for (std::size_t i = header.pixels(); i-- > 0;)
        pixels[i] = palette[packed[i]];
}

} // namespace

void TGALoader::load(Image& image, std::string const& fileName) {
    File file(fileName, File::READ);
    TgaHeader const header = readHeader(file);
    if (header.width == 0 || header.height == 0)
        throw ImageException_IllegalDimensions(fileName.c_str(), header.width, header.height);
    PixelKind const kind = pixelKind(header, fileName.c_str());
    pixelCount(header.width, header.height, fileName.c_str());
    file.setPosition(file.getPosition() + header.idLength);
    refuseImpossibleSize(header, file);

    image.resize(header.width, header.height);
    Palette const palette = readColormap(header, file);
    if (kind == PixelKind::Indexed && header.bytesPerPixel() != 1)
        readIndicesInPlace(header, palette, file, image.getData());
    else
        readPixels(header, kind, palette, file, image);
}

void TGASaver::save(Image const& image, std::string const& fileName) {
    std::size_t const size = packedSize(image, TgaHeader::kSize, fileName);
    TgaHeader const header{
        .type = 2, .width = image.getWidth(), .height = image.getHeight(), .depth = 24, .topFirst = true};
    TgaHeader::Bytes const bytes = header.toBytes();

    File file(fileName, File::WRITE);
    file.write(bytes.data(), static_cast<int>(bytes.size()));
    if (size > 0) {
        auto const rowPixels = static_cast<std::size_t>(image.getWidth());
        writeRows(file, rowPixels * kPackedPixelSize, image.getHeight(),
                  [&](int row, unsigned char* packed) { packPixels(&image(0, row), rowPixels, packed); });
    }
    file.flush(); // a full disk shows here at the latest, not in the destructor, which could not tell
}

} // namespace Zel
