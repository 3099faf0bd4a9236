// Colour-key dilation: one pass grows the areas that are not of the key colour by one pixel.

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>
#include <zel/image.h>

namespace Zel {
namespace {

/// The key colour without its alpha, which pixels are compared with as whole words.
class Key {
public:
    explicit Key(Color const& color) : m_word(wordOf(color)) {}

    bool matches(Color const& color) const { return matches(wordOf(color)); }

    static constexpr std::size_t kBlock = 32;

    /// Whether any of the pixels, at most kBlock, is of the key colour. Whole blocks are looked at side by
    /// side.
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

/// The average of those neighbours that are not of the key colour.
class Average {
public:
    void add(Color const& neighbour, Key const& key) {
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
    Color const keyColor = key; // which may be a pixel of this image
    Key const wanted(keyColor);
    auto const width = static_cast<std::size_t>(m_width);
    // Neighbours are those from before the pass; what lies outside is as good as the key colour.
    std::vector<Color> const outside(width + 1, keyColor);
    std::vector<Color> above = outside;
    std::vector<Color> row = outside; // and one pixel of the key colour behind it
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
                average.add(x > 0 ? row[x - 1] : keyColor, wanted);
                average.add(above[x], wanted);
                average.add(row[x + 1], wanted);
                average.add(below[x], wanted);
                pixels[x] = average.valueOr(keyColor);
            }
        }
        above.swap(row);
    }
}

} // namespace Zel
