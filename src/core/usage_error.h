// What a caller gets who breaks a contract that no input can break.
#pragma once

#include <zel/api.h>

namespace Zel {

/// Writes one line to standard error (the operation and the offending value, by the printf rules) and aborts.
[[noreturn]] void usageError(char const* format, ...) ZEL_PRINTF_FORMAT(1, 2);

} // namespace Zel
