// The CRC-32 register: the checksum of bytes that arrive in pieces.
//
// One table look-up a byte, after D. V. Sarwate, "Computation of Cyclic Redundancy Checks via Table Look-Up",
// Communications of the ACM 31(8), 1988. Meant: no wider tables and no hardware instructions.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace Zel {

class Crc32Register {
public:
    /// Goes on behind bytes whose checksum is `previous`; 0 is that of no bytes.
    explicit Crc32Register(std::uint32_t previous = 0) : m_register(~previous) {}

    void update(void const* data, std::size_t length) {
        auto const* bytes = static_cast<unsigned char const*>(data);
        std::uint32_t crc = m_register;
        for (std::size_t i = 0; i < length; ++i)
            crc = kTable[(crc ^ bytes[i]) & 0xFFU] ^ (crc >> 8);
        m_register = crc;
    }

    std::uint32_t value() const { return ~m_register; }

private:
    static constexpr std::array<std::uint32_t, 256> makeTable() {
        constexpr std::uint32_t kReflectedPolynomial = 0xEDB88320;
        std::array<std::uint32_t, 256> table{};
        for (std::uint32_t i = 0; i < 256; ++i) {
            std::uint32_t entry = i;
            for (int bit = 0; bit < 8; ++bit)
                entry = (entry >> 1) ^ ((entry & 1U) != 0 ? kReflectedPolynomial : 0);
            table[i] = entry;
        }
        return table;
    }

    static std::array<std::uint32_t, 256> const kTable; // built by the compiler, not at start-up

    std::uint32_t m_register;
};

inline constexpr std::array<std::uint32_t, 256> Crc32Register::kTable = Crc32Register::makeTable();

} // namespace Zel
