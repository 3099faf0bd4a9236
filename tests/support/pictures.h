// Picture files made in one line, and looks at the images that they become.
#pragma once

#include <cstdint>
#include <string>
#include <vector>
#include <zel/image.h>

namespace test {

/// The bytes given, each from 0 to 255.
std::string bytes(std::vector<int> const& values);

/// The lowest so many bytes of a number.
std::string littleEndian(std::uint32_t value, int count);

/// A TGA header; colour map and pixels go behind it.
struct Tga {
    int type = 2;
    int width = 1;
    int height = 1;
    int depth = 24;
    int descriptor = 32;
    int colormapType = 0;
    int firstEntry = 0;
    int entries = 0;
    int entryDepth = 0;
    std::string id{};

    std::string operator+(std::string const& rest) const;
};

/// A BMP file of packed pixels, whose header can say otherwise.
struct Bmp {
    std::int32_t width = 1;
    std::int32_t height = 1;
    int depth = 24;
    std::uint32_t offset = 54;

    std::string operator+(std::string const& pixels) const;
};

/// A PCX file around encoded pixels. Palette entry i is red i, green 255 - i, blue 7.
struct Pcx {
    int xMin = 0;
    int yMin = 0;
    int xMax = 0;
    int yMax = 0;
    int bytesPerLine = 1;
    int version = 5;
    int encoding = 1;
    int planes = 1;

    std::string operator+(std::string const& pixels) const;
};
Zel::Color pcxColor(int index);

/// All pixels, row by row.
std::vector<Zel::Color> pixelsOf(Zel::Image const& image);

/// An image with these pixels, row by row.
Zel::Image imageOf(int width, std::vector<Zel::Color> const& pixels);

/// One of the files in tests/data.
std::string testData(std::string const& name);

} // namespace test

namespace Zel {
/// How a failed comparison shows a colour.
void PrintTo(Color const& color, std::ostream* out); // NOLINT(readability-identifier-naming)
} // namespace Zel
