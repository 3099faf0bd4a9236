// Reading within what a C stream has read ahead. One C runtime (msvcrt) keeps it by a pointer and a count,
// which the macros of its own header use as well. The other (UCRT) hides it, and gets the portable form.
#pragma once

#include <cstdio>
#include <string_view>

#if !defined(__MINGW32__) || defined(_UCRT) || defined(ZEL_PORTABLE)
#include "platform/portable_read_ahead.h"
#else

namespace Zel::platform {

/// In a stream that is written, the count is the space left.
inline std::string_view heldBytes(std::FILE* stream) {
    bool const holds = (stream->_flag & _IOREAD) != 0 && stream->_cnt > 0;
    return {stream->_ptr, holds ? static_cast<std::size_t>(stream->_cnt) : 0};
}

inline void passReadAhead(std::FILE* stream, std::size_t count) {
    stream->_ptr += count;
    stream->_cnt -= static_cast<int>(count);
}

inline std::string_view readAhead(std::FILE* stream) {
    if (heldBytes(stream).empty())
        std::ungetc(std::fgetc(stream), stream); // which does nothing at the end
    return heldBytes(stream);
}

} // namespace Zel::platform

#endif
