// The process on POSIX hosts.

#include "host/process.h"

#include <unistd.h>

namespace zel {

HostOutput::HostOutput() = default; // it always does
HostOutput::~HostOutput() {}        // NOLINT(modernize-use-equals-default): trivial on this host alone

bool errorIsTerminal() { return isatty(STDERR_FILENO) != 0; }

HostImaging::HostImaging() = default;
HostImaging::~HostImaging() {} // NOLINT(modernize-use-equals-default): trivial on this host alone

} // namespace zel
