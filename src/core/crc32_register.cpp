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

/// Takes eight stretches side by side and joins neighbours: four, then two, then one. The registers are no
/// array, so that compilers keep each in one of the processor's.
template <std::size_t stretch>
std::uint32_t takeStretches(std::uint32_t before, unsigned char const* bytes) {
    std::uint32_t a = before;
    std::uint32_t b = 0;
    std::uint32_t c = 0;
    std::uint32_t d = 0;
    std::uint32_t e = 0;
    std::uint32_t f = 0;
    std::uint32_t g = 0;
    std::uint32_t h = 0;
    for (unsigned char const* const end = bytes + stretch; bytes != end; bytes += 4) {
        a ^= littleEndian32(bytes);
        b ^= littleEndian32(bytes + stretch);
        c ^= littleEndian32(bytes + 2 * stretch);
        d ^= littleEndian32(bytes + 3 * stretch);
        e ^= littleEndian32(bytes + 4 * stretch);
        f ^= littleEndian32(bytes + 5 * stretch);
        g ^= littleEndian32(bytes + 6 * stretch);
        h ^= littleEndian32(bytes + 7 * stretch);
        takeFour(a, b, c, d, e, f, g, h);
    }
    constexpr std::uint32_t kOne = zeroBytes(stretch);
    constexpr std::uint32_t kTwo = zeroBytes(2 * stretch);
    constexpr std::uint32_t kFour = zeroBytes(4 * stretch);
    std::uint32_t const ab = product(kOne, a) ^ b;
    std::uint32_t const cd = product(kOne, c) ^ d;
    std::uint32_t const ef = product(kOne, e) ^ f;
    std::uint32_t const gh = product(kOne, g) ^ h;
    return product(kFour, product(kTwo, ab) ^ cd) ^ product(kTwo, ef) ^ gh;
}

/// Takes eight stretches as often as there are bytes for them.
template <std::size_t stretch>
void takeAll(std::uint32_t& crc, unsigned char const*& bytes, std::size_t& length) {
    constexpr std::size_t kAll = kStretches * stretch;
    for (; length >= kAll; length -= kAll, bytes += kAll)
        crc = takeStretches<stretch>(crc, bytes);
}

} // namespace

std::uint32_t crc32InStretches(std::uint32_t crc, unsigned char const* bytes, std::size_t length) {
    // Long ones, which cost the least to join, then shorter ones.
    takeAll<2048>(crc, bytes, length);
    takeAll<512>(crc, bytes, length);
    takeAll<128>(crc, bytes, length);
    return crc32InTurn(crc, bytes, length);
}

} // namespace Zel
