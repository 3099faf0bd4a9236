// The process on Windows.

#include "host/process.h"

#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <objbase.h>
#include <windows.h>

namespace zel {

HostOutput::HostOutput() : m_codePage(GetConsoleOutputCP()) {
    _setmode(_fileno(stdout), _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
}

HostOutput::~HostOutput() {
    if (m_codePage != 0) // there was a console
        SetConsoleOutputCP(m_codePage);
}

bool errorIsTerminal() { return _isatty(_fileno(stderr)) != 0; }

HostImaging::HostImaging() { CoInitialize(nullptr); }
HostImaging::~HostImaging() { CoUninitialize(); }

} // namespace zel
