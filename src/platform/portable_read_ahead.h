// Reading ahead on a stream of any C library: one byte, which is read and put back.
#pragma once

#include <array>
#include <cstddef>
#include <cstdio>
#include <string_view>

namespace Zel::platform {

/// Every byte, at the place of its value.
inline constexpr std::array<char, 256> kBytes = [] {
    std::array<char, 256> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i);
    return bytes;
}();

/// A stream of any C library does not tell.
inline std::string_view heldBytes(std::FILE* /*stream*/) { return {}; }

inline std::string_view readAhead(std::FILE* stream) {
    int const next = std::getc(stream);
    if (next == EOF)
        return {};
    std::ungetc(next, stream);
    return {&kBytes[static_cast<std::size_t>(next)], 1};
}

inline void passReadAhead(std::FILE* stream, std::size_t count) {
    for (; count > 0; --count)
        std::getc(stream);
}

} // namespace Zel::platform
