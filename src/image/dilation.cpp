// Colour-key dilation: one pass grows the areas that are not key-coloured by one pixel.

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>
#include <zel/image.h>

namespace Zel {
namespace {

/// The key colour, without its alpha. A pixel is compared as one 32-bit word.
class Key {
public:
    explicit Key(Color const& color) : m_word(wordOf(color)) {}

    bool matches(Color const& color) const { return matches(wordOf(color)); }

    static constexpr std::size_t kBlock = 32;

    /// Whether any of at most kBlock pixels is key-coloured. A whole block is tested without branches.
    bool isAmong(Color const* pixels, std::size_t count) const {
        if (count < kBlock)
            return std::any_of(pixels, pixels + count, [this](Color const& color) { return matches(color); });
        std::uint32_t words[kBlock];
        std::memcpy(words, pixels, sizeof words);
        std::uint32_t found = 0;
        for (std::uint32_t const word : words)
            found |= static_cast<std::uint32_t>(matches(word));
        return found != 0;
    }

private:
    static_assert(std::endian::native == std::endian::little && sizeof(Color) == 4);
    static constexpr std::uint32_t kWithoutAlpha = 0x00FFFFFF;

    static std::uint32_t wordOf(Color const& color) { return std::bit_cast<std::uint32_t>(color); }
    bool matches(std::uint32_t word) const { return ((word ^ m_word) & kWithoutAlpha) == 0; }

    std::uint32_t m_word;
};

/// The average of the neighbours of a pixel that are not key-coloured.
class Average {
public:
    /// Adds one neighbour. Not by its position, as rows are at hand: what lies outside the image is passed in
    /// the key colour, and so ignored.
    void dilatePixel(Color const& neighbour, Key const& key) {
        if (key.matches(neighbour))
            return;
        m_red += neighbour.r;
        m_green += neighbour.g;
        m_blue += neighbour.b;
        m_alpha += neighbour.a;
        ++m_count;
    }

    Color valueOr(Color const& none) const {
        if (m_count == 0)
            return none;
        auto const average = [this](int sum) {
            return static_cast<std::uint8_t>(sum / m_count);
        };
        return {average(m_red), average(m_green), average(m_blue), average(m_alpha)};
    }

private:
    int m_red = 0;
    int m_green = 0;
    int m_blue = 0;
    int m_alpha = 0;
    int m_count = 0;
};

} // namespace

void Image::dilate(Color const& key) {
    if (m_data == nullptr)
        return;
    Color const keyColor = key; // a copy, as `key` may be a pixel of this image
    Key const wanted(keyColor);
    auto const width = static_cast<std::size_t>(m_width);
    // `above` and `row` keep the pixels as they were before the pass. Outside the image is the key colour.
    std::vector<Color> const outside(width + 1, keyColor);
    std::vector<Color> above = outside;
    std::vector<Color> row = outside; // its last pixel lies outside, right of the image
    for (int y = 0; y < m_height; ++y) {
        Color* const pixels = &(*this)(0, y);
        Color const* const below = y + 1 < m_height ? pixels + width : outside.data();
        std::copy_n(pixels, width, row.begin());
        for (std::size_t begin = 0; begin < width; begin += Key::kBlock) {
            std::size_t const end = std::min(begin + Key::kBlock, width);
            if (!wanted.isAmong(&row[begin], end - begin))
                continue;
            for (std::size_t x = begin; x < end; ++x) {
                if (!wanted.matches(row[x]))
                    continue;
                Average average;
                average.dilatePixel(x > 0 ? row[x - 1] : keyColor, wanted);
                average.dilatePixel(above[x], wanted);
                average.dilatePixel(row[x + 1], wanted);
                average.dilatePixel(below[x], wanted);
                pixels[x] = average.valueOr(keyColor);
            }
        }
        above.swap(row);
    }
}

} // namespace Zel
