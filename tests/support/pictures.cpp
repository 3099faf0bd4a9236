#include "support/pictures.h"
#include "support/library_test.h"

#include <algorithm>

namespace test {

std::string littleEndian(std::int64_t value, int count) {
    std::string text;
    for (int i = 0; i < count; ++i, value >>= 8)
        text += static_cast<char>(value & 255);
    return text;
}

std::string bytes(std::vector<int> const& values) {
    std::string text;
    for (int const value : values)
        text += static_cast<char>(value);
    return text;
}

std::string Tga::operator+(std::string const& rest) const {
    return bytes({static_cast<int>(id.size()), colormapType, type}) + littleEndian(firstEntry, 2) +
           littleEndian(entries, 2) + bytes({entryDepth, 99, 0, 0, 0}) + littleEndian(width, 2) +
           littleEndian(height, 2) + bytes({depth, descriptor}) + id + rest;
}

std::string Bmp::operator+(std::string const& pixels) const {
    return "BM" + std::string(8, '\1') + littleEndian(offset, 4) + std::string(4, '\3') +
           littleEndian(width, 4) + littleEndian(height, 4) + std::string(2, '\4') + littleEndian(depth, 2) +
           std::string(24, '\5') + pixels;
}

std::string Pcx::operator+(std::string const& pixels) const {
    std::string header = bytes({10, version, encoding, 8}) + littleEndian(xMin, 2) + littleEndian(yMin, 2) +
                         littleEndian(xMax, 2) + littleEndian(yMax, 2);
    header.resize(128, '\x77');
    header[65] = static_cast<char>(planes);
    header.replace(66, 2, littleEndian(bytesPerLine, 2));
    std::string palette;
    for (int i = 0; i < 256; ++i)
        palette += bytes({i, 255 - i, 7});
    return header + pixels + '\x0C' + palette;
}

Zel::Color pcxColor(int index) {
    return {static_cast<std::uint8_t>(index), static_cast<std::uint8_t>(255 - index), 7, 255};
}

Colors pixelsOf(Zel::Image const& image) {
    auto const count = static_cast<std::ptrdiff_t>(image.getWidth()) * image.getHeight();
    return {image.getData(), image.getData() + count};
}

Zel::Image imageOf(int width, Colors const& pixels) {
    Zel::Image image(width, static_cast<int>(pixels.size()) / width);
    std::copy(pixels.begin(), pixels.end(), image.getData());
    return image;
}

std::string testData(std::string const& name) { return fileContent(ZEL_TEST_DATA "/" + name); }

} // namespace test
