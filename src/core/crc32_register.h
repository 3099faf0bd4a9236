// The CRC-32 register: the checksum of bytes that arrive in pieces.
//
// One table look-up a byte, after D. V. Sarwate, "Computation of Cyclic Redundancy Checks via Table Look-Up",
// Communications of the ACM 31(8), 1988. Meant: no wider tables and no hardware instructions.
//
// Each look-up waits for the one before it, while the processor could do several. So long pieces are cut into
// stretches, whose registers take their bytes side by side and are joined then: the register behind n more
// zero bytes is the register times x^(8n) modulo the polynomial (M. Adler's crc32_combine, zlib, 2004).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace Zel {

constexpr std::uint32_t kReflectedPolynomial = 0xEDB88320;

/// What the register's low byte becomes behind eight more bits; built by the compiler, not at start-up.
inline constexpr std::array<std::uint32_t, 256> kCrc32Table = [] {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t i = 0; i < 256; ++i) {
        table[i] = i;
        for (int bit = 0; bit < 8; ++bit)
            table[i] = (table[i] >> 1) ^ ((table[i] & 1U) != 0 ? kReflectedPolynomial : 0);
    }
    return table;
}();

/// The rule: the register behind more bytes, one after the other.
inline std::uint32_t crc32InTurn(std::uint32_t crc, unsigned char const* bytes, std::size_t length) {
    for (std::size_t i = 0; i < length; ++i)
        crc = kCrc32Table[(crc ^ bytes[i]) & 0xFFU] ^ (crc >> 8);
    return crc;
}

/// The same for any length, by stretches.
std::uint32_t crc32InStretches(std::uint32_t crc, unsigned char const* bytes, std::size_t length);

class Crc32Register {
public:
    /// Goes on behind bytes whose checksum is `previous`; 0 is that of no bytes.
    explicit Crc32Register(std::uint32_t previous = 0) : m_register(~previous) {}

    void update(void const* data, std::size_t length) {
        m_register = crc32InStretches(m_register, static_cast<unsigned char const*>(data), length);
    }

    std::uint32_t value() const { return ~m_register; }

private:
    std::uint32_t m_register;
};

} // namespace Zel
