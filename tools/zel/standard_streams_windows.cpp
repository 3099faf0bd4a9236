// The standard streams on Windows.

#include "standard_streams.h"

#include <cstdio>
#include <fcntl.h>
#include <io.h>

namespace zel {

void setBinaryOutput() { _setmode(_fileno(stdout), _O_BINARY); }

bool errorIsTerminal() { return _isatty(_fileno(stderr)) != 0; }

} // namespace zel
