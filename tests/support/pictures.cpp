#include "support/pictures.h"
#include "support/library_test.h"

#include <algorithm>
#include <ostream>

namespace test {
namespace {

std::string number(int value, int count) { return littleEndian(static_cast<std::uint32_t>(value), count); }

} // namespace

std::string littleEndian(std::uint32_t value, int count) {
    std::string text;
    for (int i = 0; i < count; ++i, value >>= 8)
        text += static_cast<char>(value & 255U);
    return text;
}

std::string bytes(std::vector<int> const& values) {
    std::string text;
    for (int const value : values)
        text += static_cast<char>(value);
    return text;
}

std::string Tga::operator+(std::string const& rest) const {
    return number(static_cast<int>(id.size()), 1) + number(colormapType, 1) + number(type, 1) +
           number(firstEntry, 2) + number(entries, 2) + number(entryDepth, 1) + number(99, 4) +
           number(width, 2) + number(height, 2) + number(depth, 1) + number(descriptor, 1) + id + rest;
}

std::string Bmp::operator+(std::string const& pixels) const {
    return "BM" + number(1, 4) + number(2, 4) + littleEndian(offset, 4) + number(3, 4) + number(width, 4) +
           number(height, 4) + number(4, 2) + number(depth, 2) + std::string(24, '\5') + pixels;
}

std::string Pcx::operator+(std::string const& pixels) const {
    std::string header = bytes({10, version, encoding, 8}) + number(xMin, 2) + number(yMin, 2) +
                         number(xMax, 2) + number(yMax, 2);
    header.resize(128, '\x77');
    header[65] = static_cast<char>(planes);
    header.replace(66, 2, number(bytesPerLine, 2));
    std::string palette;
    for (int i = 0; i < 256; ++i)
        palette += bytes({i, 255 - i, 7});
    return header + pixels + '\x0C' + palette;
}

Zel::Color pcxColor(int index) {
    return {static_cast<std::uint8_t>(index), static_cast<std::uint8_t>(255 - index), 7, 255};
}

std::vector<Zel::Color> pixelsOf(Zel::Image const& image) {
    auto const count = static_cast<std::ptrdiff_t>(image.getWidth()) * image.getHeight();
    return {image.getData(), image.getData() + count};
}

Zel::Image imageOf(int width, std::vector<Zel::Color> const& pixels) {
    Zel::Image image(width, static_cast<int>(pixels.size()) / width);
    std::copy(pixels.begin(), pixels.end(), image.getData());
    return image;
}

std::string testData(std::string const& name) { return fileContent(ZEL_TEST_DATA "/" + name); }

} // namespace test

void Zel::PrintTo(Color const& color, std::ostream* out) {
    *out << "rgba(" << int{color.r} << ", " << int{color.g} << ", " << int{color.b} << ", " << int{color.a}
         << ")";
}
