// The process on Windows.

#include "process.h"

#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <objbase.h>

namespace zel {

void setBinaryOutput() { _setmode(_fileno(stdout), _O_BINARY); }

bool errorIsTerminal() { return _isatty(_fileno(stderr)) != 0; }

HostImaging::HostImaging() { CoInitialize(nullptr); }
HostImaging::~HostImaging() { CoUninitialize(); }

} // namespace zel
