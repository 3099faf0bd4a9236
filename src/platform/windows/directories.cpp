// Making and removing directories on Windows, and the names that it keeps for itself.

#include "platform/platform.h"
#include "platform/windows/paths.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <memory>
#include <string_view>

namespace Zel::platform {
namespace {

struct SearchCloser {
    using pointer = HANDLE;
    void operator()(HANDLE search) const { FindClose(search); }
};

bool hasAttribute(DWORD attributes, DWORD attribute) {
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & attribute) != 0;
}

void removeEntry(std::string const& path, DWORD attributes) {
    bool const link = hasAttribute(attributes, FILE_ATTRIBUTE_REPARSE_POINT);
    bool const directory = hasAttribute(attributes, FILE_ATTRIBUTE_DIRECTORY);
    if (directory && !link) {
        removeTree(path);
        return;
    }
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    if (directory)
        RemoveDirectoryA(path.c_str()); // the link to a directory, not what it leads to
    else
        DeleteFileA(path.c_str());
}

void removeEntries(std::string const& directory) {
    WIN32_FIND_DATAA entry;
    HANDLE const first = FindFirstFileA((directory + "\\*").c_str(), &entry);
    if (first == INVALID_HANDLE_VALUE)
        return;
    std::unique_ptr<HANDLE, SearchCloser> const search(first);
    do {
        if (std::strcmp(entry.cFileName, ".") != 0 && std::strcmp(entry.cFileName, "..") != 0)
            removeEntry(directory + "\\" + entry.cFileName, entry.dwFileAttributes);
    } while (FindNextFileA(first, &entry));
}

std::string upperCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char character) { return static_cast<char>(std::toupper(character)); });
    return text;
}

template <std::size_t count>
bool isAmong(std::array<std::string_view, count> const& list, std::string_view text) {
    return std::find(list.begin(), list.end(), text) != list.end();
}

/// Whether a stem, what stands before a name's first ".", is that of a device.
bool isDevice(std::string_view stem) {
    static constexpr std::array<std::string_view, 7> kDevices = {"CON",    "PRN",    "AUX",    "NUL",
                                                                 "CLOCK$", "CONIN$", "CONOUT$"};
    // Superscript digits count, too: one byte each in the Western code page, two in UTF-8.
    static constexpr std::array<std::string_view, 16> kPorts = {
        "0", "1", "2",    "3",    "4",    "5",        "6",        "7",
        "8", "9", "\xB9", "\xB2", "\xB3", "\xC2\xB9", "\xC2\xB2", "\xC2\xB3"};
    bool const hasPorts = stem.starts_with("COM") || stem.starts_with("LPT");
    return isAmong(kDevices, stem) || (hasPorts && isAmong(kPorts, stem.substr(3)));
}

} // namespace

Making makeDirectory(std::string const& path) {
    if (isCut(path))
        return Making::Failed;
    if (CreateDirectoryA(path.c_str(), nullptr))
        return Making::Made;
    return GetLastError() == ERROR_ALREADY_EXISTS ? Making::Existed : Making::Failed;
}

bool isTaken(std::string const& path) { return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

bool isLink(std::string const& path) {
    return hasAttribute(GetFileAttributesA(path.c_str()), FILE_ATTRIBUTE_REPARSE_POINT);
}

void removeDirectory(std::string const& path) {
    if (!isCut(path))
        RemoveDirectoryA(path.c_str());
}

void removeTree(std::string const& path) {
    if (path.empty() || isCut(path))
        return; // an empty path would be the root of the drive
    if (!isLink(path))
        removeEntries(path);
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    RemoveDirectoryA(path.c_str());
}

bool isFileName(std::string const& name) {
    if (name.find_first_not_of(". ") == std::string::npos)
        return false; // the host may drop some of these, and ".." would be left
    std::string stem = upperCase(name.substr(0, name.find('.')));
    stem.erase(stem.find_last_not_of(' ') + 1); // "NUL .txt" is a device, too
    return !isDevice(stem);
}

} // namespace Zel::platform
