// The clocks of Windows.

#include "support/clock.h"
#include "support/imports_windows.h"

#include <windows.h>

#include <memory>
#include <vector>

namespace test {
namespace {

std::int64_t s_milliseconds;
std::vector<std::unique_ptr<ReplacedImport>> s_clocks;

void __stdcall systemTime(SYSTEMTIME* now) {
    ULARGE_INTEGER units;
    constexpr ULONGLONG kUnitsFrom1601To1970 = 116'444'736'000'000'000;
    units.QuadPart = static_cast<ULONGLONG>(s_milliseconds) * 10'000 + kUnitsFrom1601To1970;
    FILETIME const fileTime = {units.LowPart, units.HighPart};
    FileTimeToSystemTime(&fileTime, now);
}

DWORD __stdcall ticks() { return static_cast<DWORD>(s_milliseconds); }

BOOL __stdcall counter(LARGE_INTEGER* now) {
    now->QuadPart = s_milliseconds * 1'000'000;
    return TRUE;
}

BOOL __stdcall frequency(LARGE_INTEGER* unitsPerSecond) {
    unitsPerSecond->QuadPart = 1'000'000'000;
    return TRUE;
}

} // namespace

StoppedClock::StoppedClock() {
    set(1'000'000'000);
    s_clocks.push_back(std::make_unique<ReplacedImport>("GetSystemTime", systemTime));
    s_clocks.push_back(std::make_unique<ReplacedImport>("timeGetTime", ticks));
    s_clocks.push_back(std::make_unique<ReplacedImport>("QueryPerformanceCounter", counter));
    s_clocks.push_back(std::make_unique<ReplacedImport>("QueryPerformanceFrequency", frequency));
}

StoppedClock::~StoppedClock() { s_clocks.clear(); }
void StoppedClock::set(std::int64_t milliseconds) { s_milliseconds = milliseconds; }
void StoppedClock::advance(std::int64_t milliseconds) { s_milliseconds += milliseconds; }

} // namespace test
