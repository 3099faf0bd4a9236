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

// Four pixels are three words packed, and four unpacked.
using PackedFour = std::array<std::uint32_t, 3>;
using Four = std::array<std::uint32_t, 4>;

Four unpackFour(PackedFour const& packed) {
    auto const [a, b, c] = packed;
    return {a | kOpaque, a >> 24 | b << 8 | kOpaque, b >> 16 | c << 16 | kOpaque, c >> 8 | kOpaque};
}

PackedFour packFour(Four const& pixels) {
    auto const [a, b, c, d] = pixels;
    return {(a & ~kOpaque) | b << 24, (b >> 8 & 0xFFFFU) | c << 16, (c >> 16 & 0xFFU) | d << 8};
}

} // namespace

void unpackPixels(unsigned char const* packed, std::size_t count, Color* pixels) {
    std::size_t i = count;
    for (; i % 4 != 0; --i) {
        unsigned char const* const from = packed + (i - 1) * kPackedPixelSize;
        pixels[i - 1] = Color(from[2], from[1], from[0], 255);
    }
    for (; i > 0; i -= 4) {
        PackedFour four;
        std::memcpy(four.data(), packed + (i - 4) * kPackedPixelSize, sizeof four);
        Four const unpacked = unpackFour(four);
        std::memcpy(static_cast<void*>(&pixels[i - 4]), unpacked.data(), sizeof unpacked);
    }
}

void packPixels(Color const* pixels, std::size_t count, unsigned char* packed) {
    for (; count >= 4; count -= 4) {
        Four four;
        std::memcpy(four.data(), pixels, sizeof four);
        PackedFour const result = packFour(four);
        std::memcpy(packed, result.data(), sizeof result);
        pixels += 4;
        packed += sizeof result;
    }
    for (; count > 0; --count, ++pixels) {
        *packed++ = pixels->b;
        *packed++ = pixels->g;
        *packed++ = pixels->r;
    }
}

std::size_t packedSize(Image const& image, std::string const& fileName) {
    std::size_t const size = pixelCount(image.getWidth(), image.getHeight()) * kPackedPixelSize;
    if (size > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
        throw FileException_WriteError(fileName.c_str());
    return size;
}

} // namespace Zel
