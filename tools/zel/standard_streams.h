// The process's standard streams; one file a platform.
#pragma once

namespace zel {

/// Makes standard output pass bytes as they are.
void setBinaryOutput();

/// Whether somebody watches standard error.
bool errorIsTerminal();

} // namespace zel
