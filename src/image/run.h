// Runs of equal pixels.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <zel/color.h>

namespace Zel {

/// writeRun may overwrite so many pixels behind the run.
constexpr std::size_t kBehindRun = 3;

/// Writes `color` to `count` pixels, in whole blocks, which is faster than one by one.
inline void writeRun(Color* pixels, std::size_t count, Color const& color) {
    std::array<std::uint32_t, kBehindRun + 1> block;
    block.fill(std::bit_cast<std::uint32_t>(color));
    for (std::size_t i = 0; i < count; i += block.size())
        std::memcpy(static_cast<void*>(pixels + i), block.data(), sizeof block);
}

} // namespace Zel
