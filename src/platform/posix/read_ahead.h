// Reading within what a C stream has read ahead. glibc keeps it between two pointers of the stream, which its
// own inline functions use as well, so that they are part of its binary interface. Other C libraries (musl)
// get the portable form.
#pragma once

#include <cstdio>
#include <string_view>

#if !defined(__GLIBC__) || defined(ZEL_PORTABLE)
#include "platform/portable_read_ahead.h"
#else

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

#endif
