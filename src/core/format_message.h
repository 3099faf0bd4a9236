// Formatting into buffers of fixed size, cut off silently where they end.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdio>

namespace Zel {

/// Formats into `buffer`, which is terminated whatever happens; a format that fails gives an empty text.
template <std::size_t Size>
void formatMessage(char (&buffer)[Size], char const* format, std::va_list arguments) {
    if (std::vsnprintf(buffer, Size, format, arguments) < 0)
        buffer[0] = '\0';
}

} // namespace Zel
