// Packing and unpacking, four pixels at a time.

#include "image/packed_pixels.h"

#include "image/dimensions.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace Zel {

namespace {

static_assert(std::endian::native == std::endian::little && sizeof(Color) == 4);

constexpr std::uint32_t kOpaque = 0xFF000000U;

/// The number in the bytes at `place`, which need not be aligned.
template <class Number>
Number numberAt(void const* place) {
    Number number;
    std::memcpy(&number, place, sizeof number);
    return number;
}

template <class Number>
void putNumber(void* place, Number number) {
    std::memcpy(place, &number, sizeof number);
}

/// Unpacks four pixels: twelve bytes become sixteen. All are read, and the byte behind them, before any is
/// written.
void unpackFour(unsigned char const* packed, Color* pixels) {
    std::array<std::uint32_t, 4> four{};
    for (std::size_t i = 0; i < four.size(); ++i)
        four[i] = numberAt<std::uint32_t>(packed + i * kPackedPixelSize) | kOpaque;
    std::memcpy(static_cast<void*>(pixels), four.data(), sizeof four);
}

/// Packs four pixels: sixteen bytes become twelve.
void packFour(Color const* pixels, unsigned char* packed) {
    constexpr std::uint64_t kColor = 0x00FFFFFF;
    auto const ab = numberAt<std::uint64_t>(pixels);
    auto const cd = numberAt<std::uint64_t>(pixels + 2);
    std::uint64_t const two = (ab & kColor) | (ab >> 32 & kColor) << 24; // six bytes
    std::uint64_t const twoMore = (cd & kColor) | (cd >> 32 & kColor) << 24;
    putNumber(packed, two | twoMore << 48);
    putNumber(packed + 8, static_cast<std::uint32_t>(twoMore >> 16));
}

} // namespace

void unpackPixels(unsigned char const* packed, std::size_t count, Color* pixels) {
    if (count == 0)
        return;
    std::size_t const single = (count - 1) % 4 + 1; // never none: the last pixel has no byte behind it
    std::size_t i = count - single;
    scalar::unpackPixels(packed + i * kPackedPixelSize, single, pixels + i);
    for (; i > 0; i -= 4)
        unpackFour(packed + (i - 4) * kPackedPixelSize, &pixels[i - 4]);
}

void packPixels(Color const* pixels, std::size_t count, unsigned char* packed) {
    for (; count >= 4; count -= 4) {
        packFour(pixels, packed);
        pixels += 4;
        packed += 4 * kPackedPixelSize;
    }
    scalar::packPixels(pixels, count, packed);
}

std::size_t packedSize(Image const& image, std::size_t extra, std::string const& fileName) {
    std::size_t const size = pixelCount(image.getWidth(), image.getHeight()) * kPackedPixelSize;
    if (size + extra > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
        throw FileException_WriteError(fileName.c_str());
    return size;
}

} // namespace Zel
