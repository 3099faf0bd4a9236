// Names on Windows, and those that it keeps for itself.

#include "platform/ascii.h"
#include "platform/platform.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace Zel::platform {
namespace {

template <std::size_t count>
bool isAmong(std::array<std::string_view, count> const& list, std::string_view text) {
    return std::find(list.begin(), list.end(), text) != list.end();
}

/// Whether a stem, what stands before a name's first ".", is that of a device.
bool isDevice(std::string_view stem) {
    static constexpr std::array<std::string_view, 7> kDevices = {"con",    "prn",    "aux",    "nul",
                                                                 "clock$", "conin$", "conout$"};
    // Superscript digits count, too: one byte each in the Western code page, two in UTF-8.
    static constexpr std::array<std::string_view, 16> kPorts = {
        "0", "1", "2",    "3",    "4",    "5",        "6",        "7",
        "8", "9", "\xB9", "\xB2", "\xB3", "\xC2\xB9", "\xC2\xB2", "\xC2\xB3"};
    bool const hasPorts = stem.starts_with("com") || stem.starts_with("lpt");
    return isAmong(kDevices, stem) || (hasPorts && isAmong(kPorts, stem.substr(3)));
}

} // namespace

bool isTaken(std::string const& path) { return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

bool isFileName(std::string const& name) {
    if (name.find_first_not_of(". ") == std::string::npos)
        return false; // the host may drop some of these, and ".." would be left
    std::string stem = toAsciiLowerCase(name.substr(0, name.find('.')));
    stem.erase(stem.find_last_not_of(' ') + 1); // "NUL .txt" is a device, too
    return !isDevice(stem);
}

} // namespace Zel::platform
