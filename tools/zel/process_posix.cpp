// The process on POSIX hosts.

#include "process.h"

#include <unistd.h>

namespace zel {

void setBinaryOutput() {} // it always does

bool errorIsTerminal() { return isatty(STDERR_FILENO) != 0; }

HostImaging::HostImaging() = default;
HostImaging::~HostImaging() {} // NOLINT(modernize-use-equals-default): trivial on this host alone

} // namespace zel
