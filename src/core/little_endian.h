// Fields of file formats, stored with the low byte first.
#pragma once

#include <cstdint>

namespace Zel {

/// The 32-bit number in the four bytes at `bytes`, on any machine.
inline std::uint32_t littleEndian32(unsigned char const* bytes) {
    return static_cast<std::uint32_t>(bytes[0]) | static_cast<std::uint32_t>(bytes[1]) << 8 |
           static_cast<std::uint32_t>(bytes[2]) << 16 | static_cast<std::uint32_t>(bytes[3]) << 24;
}

} // namespace Zel
