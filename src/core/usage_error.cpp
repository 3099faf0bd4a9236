// The end of a process whose code breaks a contract.

#include "core/usage_error.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace Zel {

void usageError(char const* format, ...) {
    std::fputs("BvSystem: ", stderr);
    std::va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
    std::fputc('\n', stderr);
    std::abort();
}

} // namespace Zel
