// Temporary directories and names, and removing what extraction has put there.

#include "file/names.h"
#include "file/number_pattern.h"
#include "platform/platform.h"

#include <cstdio>
#include <set>
#include <zel/file.h>

namespace Zel {
namespace {

constexpr char const* kTemporaryRoot = "Brisvane\\temp";

std::string temporarySubFolder(unsigned attempt) {
    char folder[256];
    if (File::sm_uniquepathnames != 0) {
        std::uint64_t const time = platform::systemTime();
        std::uint64_t const counter = platform::performanceCounter();
        std::snprintf(folder, sizeof folder, "%s\\tmp_%u_%u_%u_%u_%u\\", kTemporaryRoot, attempt,
                      static_cast<unsigned>(time), static_cast<unsigned>(time >> 32),
                      static_cast<unsigned>(counter), static_cast<unsigned>(counter >> 32));
    } else {
        std::snprintf(folder, sizeof folder, "%s\\tmp_%u\\", kTemporaryRoot, attempt);
    }
    return folder;
}

/// The name for a number, by a printf pattern.
std::string temporaryName(std::string const& pattern, unsigned number) {
    auto name = formatNumber(pattern.c_str(), number); // up to a zero byte
    if (!name)
        throw FileException_GetTempNameFailed(pattern.c_str());
    return *std::move(name);
}

/// Whether one of the directories that lead to a recorded path was recorded itself and is now a link.
bool leadsThroughLink(std::string const& path, std::set<std::string> const& recorded) {
    for (std::size_t end = path.find('\\'); end < path.size() - 1; end = path.find('\\', end + 1)) {
        if (recorded.contains(path.substr(0, end + 1)) && platform::isLink(path.substr(0, end)))
            return true;
    }
    return false;
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
        // Recorded first, so that it does not stay when memory runs out. The final separator is what tells a
        // directory from a file in the record.
        sm_extractedFiles.push_back(withFinalSeparator(*candidate));
        if (platform::commonDataFolder(subFolder, platform::FolderQuery::Create))
            return sm_extractedFiles.back();
        sm_extractedFiles.pop_back();
    }
    return {};
}

std::string File::getTempName(std::string const& pattern) {
    std::string const first = temporaryName(pattern, 0);
    std::string candidate = first;
    for (unsigned number = 1; platform::pathExists(candidate); ++number) {
        candidate = temporaryName(pattern, number);
        if (candidate == first)
            throw FileException_GetTempNameFailed(pattern.c_str());
    }
    return candidate;
}

void File::cleanup() {
    std::set<std::string> const recorded(sm_extractedFiles.begin(), sm_extractedFiles.end());
    while (!sm_extractedFiles.empty()) {
        std::string path = sm_extractedFiles.back();
        bool const removable = !leadsThroughLink(path, recorded);
        if (removable && path.ends_with('\\')) {
            path.pop_back();
            platform::removeDirectory(path);
        } else if (removable) {
            platform::removeFile(path);
        }
        sm_extractedFiles.pop_back();
    }
}

// Callers know the two as members of an object, although they use nothing of it.

void File::forced_cleanup() {
    auto const root = platform::commonDataFolder(kTemporaryRoot, platform::FolderQuery::Create);
    if (root)
        platform::removeTree(*root);
}

void File::forced_remove_directory(char const* directory) {
    std::string path = directory;
    while (path.ends_with('\\') || path.ends_with('/'))
        path.pop_back();
    platform::removeTree(path);
}

} // namespace Zel
