// Console events.

#include "host/interruption.h"

#include <cstdio>
#include <mutex>
#include <utility>
#include <windows.h>

namespace zel {
namespace {

std::mutex s_mutex; // events come on a thread of their own
wchar_t const* s_file = nullptr;

void setFile(wchar_t const* file) {
    std::lock_guard<std::mutex> const lock(s_mutex);
    s_file = file;
}

/// A file that is open cannot be removed: all are closed first, as the process ends when this returns.
BOOL WINAPI removeAndEnd(DWORD /*event*/) {
    std::lock_guard<std::mutex> const lock(s_mutex);
    if (s_file != nullptr) {
        _fcloseall();
        DeleteFileW(s_file);
    }
    return FALSE;
}

} // namespace

RemovedOnInterruption::RemovedOnInterruption(std::filesystem::path file) : m_file(std::move(file)) {
    setFile(m_file.c_str());
    SetConsoleCtrlHandler(removeAndEnd, TRUE);
}

RemovedOnInterruption::~RemovedOnInterruption() {
    SetConsoleCtrlHandler(removeAndEnd, FALSE);
    setFile(nullptr);
}

} // namespace zel
