// Truevision TGA files: grey, palette and true-colour pictures, raw or run-length encoded.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <zel/file.h>
#include <zel/image.h>

namespace Zel {

class BlockReader;

class TGALoader {
public:
    virtual ~TGALoader() = default;
    void load(Image& image, std::string const& fileName);

private:
    enum class PixelKind { Grey, Indexed, Direct16, Direct24, Direct32 };

    void readHeader(File& file);
    void choosePixelKind();
    std::size_t fewestBytes() const;
    void refuseImpossibleSize(File const& file);
    void readColormap(File& file);
    void checkColormap();
    void readPixels(File& file, Image& image);
    void convert(unsigned char const* packed, std::size_t count, Color* pixels) const;
    void readPixelsInPlace(File& file, Color* pixelData);
    template <class Repeat, class Read>
    void decodeRow(BlockReader& reader, Repeat repeat, Read read);
    void readPacketHeader(BlockReader& reader);

    std::size_t entrySize() const { return (static_cast<std::size_t>(m_entryDepth) + 1) / 8; }
    /// Whether each pixel has as many bytes as its kind takes. Palette pixels alone may have others.
    bool isPixelOfItsKind() const { return m_kind != PixelKind::Indexed || m_bytesPerPixel == 1; }
    int placeOf(int row) const { return m_topFirst ? row : m_height - 1 - row; }
    bool isColormapped() const { return m_type == 1 || m_type == 9; }
    std::size_t rowSize() const { return static_cast<std::size_t>(m_width) * m_bytesPerPixel; }
    std::size_t pixels() const {
        return static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height);
    }

    std::string m_fileName;
    // From the header.
    int m_idLength = 0;
    int m_colormapType = 0;
    int m_type = 0;
    int m_firstEntry = 0;
    int m_entries = 0;
    int m_entryDepth = 0;
    int m_width = 0;
    int m_height = 0;
    int m_depth = 0;
    bool m_topFirst = false;
    // What follows from it.
    std::size_t m_bytesPerPixel = 0;
    PixelKind m_kind = PixelKind::Grey;
    bool m_encoded = false;
    // The present packet of run-length encoded pixels; packets run on across rows.
    std::size_t m_packetLeft = 0;
    bool m_repeatPacket = false;
    std::array<unsigned char, 16> m_repeated{};

    std::array<Color, 256> m_palette{};
};

class TGASaver {
public:
    virtual ~TGASaver() = default;
    void save(Image const& image, std::string const& fileName);
};

} // namespace Zel
