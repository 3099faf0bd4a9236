// Reading within what a C stream has read ahead. The C library (glibc) keeps it between two pointers of the
// stream, which its own inline functions use as well, so that they are part of its binary interface.
#pragma once

#include <cstdio>
#include <string_view>

namespace Zel::platform {

inline std::string_view heldBytes(std::FILE* stream) {
    return {stream->_IO_read_ptr, static_cast<std::size_t>(stream->_IO_read_end - stream->_IO_read_ptr)};
}

inline std::string_view readAhead(std::FILE* stream) {
    if (heldBytes(stream).empty() && getc_unlocked(stream) != EOF)
        --stream->_IO_read_ptr;
    return heldBytes(stream);
}

inline void passReadAhead(std::FILE* stream, std::size_t count) { stream->_IO_read_ptr += count; }

} // namespace Zel::platform
