// How the entries of archives are scrambled: every byte is combined with one fixed key, the same way in both
// directions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Zel {

constexpr unsigned char kScrambleKey = 0x3B;

inline char unscramble(char byte) { return static_cast<char>(byte ^ kScrambleKey); }

/// In words of four bytes first: a typed value that was stored byte by byte would be slow to load whole.
inline void unscramble(void* data, std::size_t length) {
    auto* bytes = static_cast<unsigned char*>(data);
    for (; length >= sizeof(std::uint32_t); length -= sizeof(std::uint32_t)) {
        std::uint32_t word = 0;
        std::memcpy(&word, bytes, sizeof word);
        word ^= kScrambleKey * 0x01010101U;
        std::memcpy(bytes, &word, sizeof word);
        bytes += sizeof word;
    }
    for (; length > 0; --length)
        *bytes++ ^= kScrambleKey;
}

} // namespace Zel
