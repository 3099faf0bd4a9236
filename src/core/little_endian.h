// Fields of file formats, stored with the low byte first.
#pragma once

#include <cstdint>

namespace Zel {

/// The 16-bit number in the two bytes at `bytes`, on any machine.
inline std::uint16_t littleEndian16(unsigned char const* bytes) {
    return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
}

/// The 32-bit number in the four bytes at `bytes`, on any machine.
inline std::uint32_t littleEndian32(unsigned char const* bytes) {
    return static_cast<std::uint32_t>(bytes[0]) | static_cast<std::uint32_t>(bytes[1]) << 8 |
           static_cast<std::uint32_t>(bytes[2]) << 16 | static_cast<std::uint32_t>(bytes[3]) << 24;
}

/// Stores a number as two bytes.
inline void putLittleEndian16(unsigned char* bytes, std::uint16_t value) {
    bytes[0] = static_cast<unsigned char>(value);
    bytes[1] = static_cast<unsigned char>(value >> 8);
}

/// Stores a number as four bytes.
inline void putLittleEndian32(unsigned char* bytes, std::uint32_t value) {
    putLittleEndian16(bytes, static_cast<std::uint16_t>(value));
    putLittleEndian16(bytes + 2, static_cast<std::uint16_t>(value >> 16));
}

} // namespace Zel
