// The four channels of a pixel side by side, by the vector extensions of GCC and clang: one operation works
// on all four, each with the result that it has alone. Made of what every x86-64 processor has.
#pragma once

#include <bit>
#include <cstdint>
#include <zel/image.h>

namespace Zel {

using FloatLanes = float __attribute__((vector_size(16)));
using IntLanes = std::int32_t __attribute__((vector_size(16)));

static_assert(std::endian::native == std::endian::little && sizeof(Color) == 4);

/// Blue, green, red and alpha.
inline IntLanes toLanes(Color const& color) {
    using Words = std::uint32_t __attribute__((vector_size(16)));
    using Bytes = std::uint8_t __attribute__((vector_size(16)));
    using HalfWords = std::uint16_t __attribute__((vector_size(16)));
    Words const words = {std::bit_cast<std::uint32_t>(color), 0, 0, 0};
    auto const interleaved = __builtin_shufflevector(reinterpret_cast<Bytes>(words), Bytes{}, 0, 16, 1, 17, 2,
                                                     18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23);
    return reinterpret_cast<IntLanes>(__builtin_shufflevector(reinterpret_cast<HalfWords>(interleaved),
                                                              HalfWords{}, 0, 8, 1, 9, 2, 10, 3, 11));
}

/// The colour of four channels from 0 to 255.
inline Color toColor(IntLanes lanes) {
    using Pairs = std::uint64_t __attribute__((vector_size(16)));
    auto pairs = reinterpret_cast<Pairs>(lanes);
    pairs |= pairs >> 24; // the second of each pair comes to stand behind the first
    return std::bit_cast<Color>(static_cast<std::uint32_t>((pairs[0] & 0xFFFFU) | pairs[1] << 16));
}

inline FloatLanes toFloat(IntLanes lanes) { return __builtin_convertvector(lanes, FloatLanes); }

/// Truncated toward zero; each value must be one that 32 bits hold.
inline IntLanes toInt(FloatLanes lanes) { return __builtin_convertvector(lanes, IntLanes); }

} // namespace Zel
