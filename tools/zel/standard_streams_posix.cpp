// The standard streams on POSIX hosts.

#include "standard_streams.h"

#include <unistd.h>

namespace zel {

void setBinaryOutput() {} // it always does

bool errorIsTerminal() { return isatty(STDERR_FILENO) != 0; }

} // namespace zel
