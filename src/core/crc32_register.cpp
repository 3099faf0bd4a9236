// The checksum by stretches.

#include "core/crc32_register.h"

#include "core/little_endian.h"

namespace Zel {
namespace {

constexpr std::size_t kStretches = 8;

/// The product of two polynomials modulo the CRC's, as registers hold them: the lowest power in the highest
/// bit.
constexpr std::uint32_t product(std::uint32_t a, std::uint32_t b) {
    std::uint32_t sum = 0;
    for (int bit = 31; bit >= 0; --bit) {
        sum ^= b & (0 - (a >> bit & 1U));
        b = (b >> 1) ^ (kReflectedPolynomial & (0 - (b & 1U)));
    }
    return sum;
}

/// What the register is multiplied by to stand behind that many zero bytes, a power of two.
constexpr std::uint32_t zeroBytes(std::size_t count) {
    std::uint32_t power = 1U << (31 - 8); // x^8
    for (; count > 1; count /= 2)
        power = product(power, power);
    return power;
}

/// Behind a byte that the register is combined with.
std::uint32_t next(std::uint32_t crc) { return kCrc32Table[crc & 0xFFU] ^ (crc >> 8); }

/// Each behind the four bytes that it is combined with.
template <class... Register>
void takeFour(Register&... crc) {
    ((crc = next(crc)), ...);
    ((crc = next(crc)), ...);
    ((crc = next(crc)), ...);
    ((crc = next(crc)), ...);
}

/// The length of a stretch, and what stands for one, two and four of them in a join.
struct Stretch {
    std::size_t length;
    std::uint32_t one = zeroBytes(length);
    std::uint32_t two = zeroBytes(2 * length);
    std::uint32_t four = zeroBytes(4 * length);
};

/// Takes eight stretches side by side and joins neighbours: four, then two, then one. The registers are no
/// array, so that compilers keep each in one of the processor's.
std::uint32_t takeStretches(std::uint32_t before, unsigned char const* bytes, Stretch const& stretch) {
    std::size_t const length = stretch.length;
    std::uint32_t a = before;
    std::uint32_t b = 0;
    std::uint32_t c = 0;
    std::uint32_t d = 0;
    std::uint32_t e = 0;
    std::uint32_t f = 0;
    std::uint32_t g = 0;
    std::uint32_t h = 0;
    for (unsigned char const* const end = bytes + length; bytes != end; bytes += 4) {
        a ^= littleEndian32(bytes);
        b ^= littleEndian32(bytes + length);
        c ^= littleEndian32(bytes + 2 * length);
        d ^= littleEndian32(bytes + 3 * length);
        e ^= littleEndian32(bytes + 4 * length);
        f ^= littleEndian32(bytes + 5 * length);
        g ^= littleEndian32(bytes + 6 * length);
        h ^= littleEndian32(bytes + 7 * length);
        takeFour(a, b, c, d, e, f, g, h);
    }
    std::uint32_t const ab = product(stretch.one, a) ^ b;
    std::uint32_t const cd = product(stretch.one, c) ^ d;
    std::uint32_t const ef = product(stretch.one, e) ^ f;
    std::uint32_t const gh = product(stretch.one, g) ^ h;
    return product(stretch.four, product(stretch.two, ab) ^ cd) ^ product(stretch.two, ef) ^ gh;
}

} // namespace

std::uint32_t crc32InStretches(std::uint32_t crc, unsigned char const* bytes, std::size_t length) {
    // Long ones, which cost the least to join, then shorter ones.
    static constexpr Stretch kLengths[] = {{2048}, {512}, {128}};
    for (Stretch const& stretch : kLengths) {
        std::size_t const all = kStretches * stretch.length;
        for (; length >= all; length -= all, bytes += all)
            crc = takeStretches(crc, bytes, stretch);
    }
    return crc32InTurn(crc, bytes, length);
}

} // namespace Zel
