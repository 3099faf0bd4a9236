// Colour-key dilation: one pass grows the areas that are not of the key colour by one pixel.

#include <utility>
#include <zel/image.h>

namespace Zel {
namespace {

bool isKey(Color const& color, Color const& key) {
    return color.r == key.r && color.g == key.g && color.b == key.b;
}

} // namespace

/// Adds a neighbour to the sums, unless it lies outside or is of the key colour.
inline void Image::dilatePixel(int x, int y, Color const& key, int& r, int& g, int& b, int& a,
                               int& count) const {
    if (x < 0 || y < 0 || x >= m_width || y >= m_height)
        return;
    Color const& neighbour = (*this)(x, y);
    if (isKey(neighbour, key))
        return;
    r += neighbour.r;
    g += neighbour.g;
    b += neighbour.b;
    a += neighbour.a;
    ++count;
}

void Image::dilate(Color const& key) {
    if (m_data == nullptr)
        return;
    Image grown(m_width, m_height); // neighbours are those from before the pass
    for (int y = 0; y < m_height; ++y) {
        for (int x = 0; x < m_width; ++x) {
            Color const& pixel = (*this)(x, y);
            if (!isKey(pixel, key)) {
                grown(x, y) = pixel;
                continue;
            }
            int r = 0;
            int g = 0;
            int b = 0;
            int a = 0;
            int count = 0;
            dilatePixel(x - 1, y, key, r, g, b, a, count);
            dilatePixel(x, y - 1, key, r, g, b, a, count);
            dilatePixel(x + 1, y, key, r, g, b, a, count);
            dilatePixel(x, y + 1, key, r, g, b, a, count);
            auto const average = [count](int sum) {
                return static_cast<std::uint8_t>(sum / count);
            };
            grown(x, y) = count > 0 ? Color(average(r), average(g), average(b), average(a)) : key;
        }
    }
    m_data = std::move(grown.m_data);
}

} // namespace Zel
