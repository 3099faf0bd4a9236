// How the entries of archives are scrambled: every byte is combined with one fixed key, the same way in both
// directions.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace Zel {

constexpr unsigned char kScrambleKey = 0x3B;

inline char unscramble(char byte) { return static_cast<char>(byte ^ kScrambleKey); }

/// In units of some type, from the left, as far as whole ones go. Returns how many bytes are left.
template <class Unit>
std::size_t unscrambleUnits(unsigned char*& bytes, std::size_t length) {
    constexpr std::uint64_t kKeys = kScrambleKey * 0x0101010101010101U;
    for (; length >= sizeof(Unit); length -= sizeof(Unit)) {
        Unit unit;
        std::memcpy(&unit, bytes, sizeof unit);
        for (auto& part : unit)
            part ^= static_cast<std::remove_reference_t<decltype(part)>>(kKeys);
        std::memcpy(bytes, &unit, sizeof unit);
        bytes += sizeof unit;
    }
    return length;
}

/// In blocks first, which the processor works on at once, then in words: a typed value that was stored byte
/// by byte would be slow to load whole.
inline void unscramble(void* data, std::size_t length) {
    auto* bytes = static_cast<unsigned char*>(data);
    length = unscrambleUnits<std::array<std::uint64_t, 8>>(bytes, length);
    length = unscrambleUnits<std::array<std::uint32_t, 1>>(bytes, length);
    unscrambleUnits<std::array<unsigned char, 1>>(bytes, length);
}

} // namespace Zel
