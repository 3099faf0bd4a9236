// Temporary directories and names.

#include "file/names.h"
#include "platform/platform.h"

#include <cstdio>
#include <zel/file.h>

namespace Zel {
namespace {

std::string temporarySubFolder(unsigned attempt) {
    char folder[256];
    if (File::sm_uniquepathnames != 0) {
        std::uint64_t const time = platform::systemTime();
        std::uint64_t const counter = platform::performanceCounter();
        std::snprintf(folder, sizeof folder, "Brisvane\\temp\\tmp_%u_%u_%u_%u_%u\\", attempt,
                      static_cast<unsigned>(time), static_cast<unsigned>(time >> 32),
                      static_cast<unsigned>(counter), static_cast<unsigned>(counter >> 32));
    } else {
        std::snprintf(folder, sizeof folder, "Brisvane\\temp\\tmp_%u\\", attempt);
    }
    return folder;
}

/// Whether the pattern holds at most one conversion, of an integer with flags and width; "%%" is none.
bool isNumberPattern(std::string const& pattern) {
    int conversions = 0;
    for (std::size_t i = pattern.find('%'); i != std::string::npos; i = pattern.find('%', i + 1)) {
        if (pattern.compare(i, 2, "%%") == 0) {
            ++i;
            continue;
        }
        std::size_t const width = pattern.find_first_not_of("-+ #0", i + 1);
        i = pattern.find_first_not_of("0123456789", width);
        if (i == std::string::npos || std::string("udx").find(pattern[i]) == std::string::npos)
            return false;
        if (i - width > 3) // more digits make too long a name, and more than some formatters can bear
            return false;
        ++conversions;
    }
    return conversions <= 1;
}

/// The name for a number, by a pattern that isNumberPattern accepts.
std::string temporaryName(std::string const& pattern, unsigned number) {
    char name[260];
    int const length = std::snprintf(name, sizeof name, pattern.c_str(), number);
    if (length < 0 || length >= static_cast<int>(sizeof name))
        throw FileException_GetTempNameFailed(pattern.c_str());
    return name;
}

} // namespace

int File::sm_uniquepathnames = 1;
std::list<std::string> File::sm_extractedFiles;

void File::setUniquePathNames(int unique) { sm_uniquepathnames = unique; }

std::string File::getTmpDir() {
    constexpr unsigned kAttempts = 50;
    for (unsigned attempt = 1; attempt <= kAttempts; ++attempt) {
        std::string const subFolder = temporarySubFolder(attempt);
        auto const candidate = platform::commonDataFolder(subFolder, platform::FolderQuery::Locate);
        if (!candidate || platform::isTaken(*candidate))
            continue;
        if (auto const folder = platform::commonDataFolder(subFolder, platform::FolderQuery::Create)) {
            // The final separator is what tells a directory from a file in the record.
            sm_extractedFiles.push_back(withFinalSeparator(*folder));
            return sm_extractedFiles.back();
        }
    }
    return {};
}

std::string File::getTempName(std::string const& pattern) {
    if (!isNumberPattern(pattern))
        throw FileException_GetTempNameFailed(pattern.c_str());
    std::string const first = temporaryName(pattern, 0);
    std::string candidate = first;
    for (unsigned number = 1; platform::pathExists(candidate); ++number) {
        candidate = temporaryName(pattern, number);
        if (candidate == first)
            throw FileException_GetTempNameFailed(pattern.c_str());
    }
    return candidate;
}

} // namespace Zel
