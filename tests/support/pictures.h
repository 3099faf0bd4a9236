// Colours, picture files made in one line, and looks at the images that they become.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>
#include <zel/image.h>

namespace test {

using Colors = std::vector<Zel::Color>;

inline Zel::Color const kBlack;
inline Zel::Color const kRed(200, 1, 2, 255);
inline Zel::Color const kBlue(3, 4, 201, 255);
inline Zel::Color const kGreen(5, 202, 6, 255);

inline Zel::Color grey(int value) {
    auto const v = static_cast<std::uint8_t>(value);
    return {v, v, v, 255};
}

/// Any colour, of any alpha.
inline Zel::Color randomColor(std::minstd_rand& random) {
    auto const channel = [&random] {
        return static_cast<std::uint8_t>(random() >> 8);
    };
    return {channel(), channel(), channel(), channel()};
}

/// The bytes given, each from 0 to 255.
std::string bytes(std::vector<int> const& values);

/// The lowest so many bytes of a number.
std::string littleEndian(std::int64_t value, int count);

/// A TGA header; colour map and pixels go behind it.
struct Tga {
    int type = 2, width = 1, height = 1, depth = 24, descriptor = 32;
    int colormapType = 0, firstEntry = 0, entries = 0, entryDepth = 0;
    std::string id{};

    std::string operator+(std::string const& rest) const;
};

/// A BMP file of packed pixels, whose header can say otherwise.
struct Bmp {
    int width = 1, height = 1, depth = 24;
    std::uint32_t offset = 54;

    std::string operator+(std::string const& pixels) const;
};

/// A PCX file around encoded pixels. Palette entry i is red i, green 255 - i, blue 7.
struct Pcx {
    int xMin = 0, yMin = 0, xMax = 0, yMax = 0, bytesPerLine = 1;
    int version = 5, encoding = 1, planes = 1;

    std::string operator+(std::string const& pixels) const;
};
Zel::Color pcxColor(int index);

/// All pixels, row by row.
Colors pixelsOf(Zel::Image const& image);

/// An image with these pixels, row by row.
Zel::Image imageOf(int width, Colors const& pixels);

/// One of the files in tests/data.
std::string testData(std::string const& name);

} // namespace test
