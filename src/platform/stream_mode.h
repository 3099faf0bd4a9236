// How the C library is told what a stream is for.
#pragma once

#include "platform/platform.h"

namespace Zel::platform {

inline char const* modeOf(Open open) {
    switch (open) {
    case Open::Write:
        return "wb";
    case Open::WriteText:
        return "w";
    default:
        return "a";
    }
}

} // namespace Zel::platform
