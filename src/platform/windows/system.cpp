// Folders, names and clocks of the machine on Windows: the shell and the kernel.

#include "platform/platform.h"
#include "platform/windows/paths.h"

#include <windows.h>

#include <mmsystem.h>
#include <shlobj.h>

#include <cstdlib>

namespace Zel::platform {
namespace {

/// What the shell tells of a sub-folder of a folder with such an id, without a final separator.
std::optional<std::string> folderPath(std::string const& subFolder, int id) {
    char path[MAX_PATH] = {};
    if (FAILED(SHGetFolderPathAndSubDirA(nullptr, id, nullptr, SHGFP_TYPE_CURRENT, subFolder.c_str(), path)))
        return std::nullopt;
    std::string result = path;
    if (result.ends_with('\\'))
        result.pop_back();
    return result;
}

} // namespace

std::optional<std::string> startupDirectory() {
    char program[260];
    DWORD const length = GetModuleFileNameA(nullptr, program, sizeof program);
    if (length == 0 || length >= sizeof program)
        return std::nullopt;

    char drive[_MAX_DRIVE];
    char directory[_MAX_DIR];
    char path[260];
    if (_splitpath_s(program, drive, sizeof drive, directory, sizeof directory, nullptr, 0, nullptr, 0) !=
            0 ||
        _makepath_s(path, sizeof path, drive, directory, nullptr, nullptr) != 0)
        return std::nullopt;
    return path;
}

std::optional<std::string> commonDataFolder(std::string const& subFolder, FolderQuery query) {
    static_assert((CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE) == 0x8023);
    static_assert((CSIDL_COMMON_APPDATA | CSIDL_FLAG_DONT_VERIFY) == 0x4023);
    auto path = folderPath(subFolder, CSIDL_COMMON_APPDATA | CSIDL_FLAG_DONT_VERIFY);
    if (!path || query == FolderQuery::Locate)
        return path;
    std::size_t const below = subFolder.size() - (subFolder.ends_with('\\') ? 1 : 0);
    if (leadsThroughLink(*path, path->size() - below))
        return std::nullopt;
    return folderPath(subFolder, CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE);
}

std::optional<std::string> computerName() {
    char name[MAX_COMPUTERNAME_LENGTH + 1];
    static_assert(sizeof name == 16);
    DWORD size = sizeof name;
    if (GetComputerNameA(name, &size) == FALSE)
        return std::nullopt;
    return name;
}

std::uint64_t systemTime() {
    SYSTEMTIME now;
    FILETIME fileTime;
    GetSystemTime(&now);
    if (SystemTimeToFileTime(&now, &fileTime) == FALSE)
        return 0;
    return static_cast<std::uint64_t>(fileTime.dwHighDateTime) << 32 | fileTime.dwLowDateTime;
}

std::uint32_t milliseconds() { return timeGetTime(); }

bool beginMillisecondTicks() { return timeBeginPeriod(1) == TIMERR_NOERROR; }
void endMillisecondTicks() { timeEndPeriod(1); }

std::uint64_t performanceCounter() {
    LARGE_INTEGER counter;
    QueryPerformanceCounter(&counter);
    return static_cast<std::uint64_t>(counter.QuadPart);
}

std::optional<std::int64_t> performanceFrequency() {
    LARGE_INTEGER frequency;
    if (QueryPerformanceFrequency(&frequency) == FALSE)
        return std::nullopt;
    return frequency.QuadPart;
}

void expectUse(void* /*memory*/, std::size_t /*size*/) {} // large pages take a privilege here

} // namespace Zel::platform
