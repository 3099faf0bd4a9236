// Temporary directories, and removing what extraction has put there.

#include "extraction/temporary.h"

#include "file/names.h"
#include "platform/platform.h"

#include <cstdio>
#include <optional>
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

} // namespace

std::size_t privatePart(std::string const& path) {
    std::size_t const root = path.find(std::string("\\") + kTemporaryRoot + "\\tmp_");
    return root == std::string::npos ? root : root + 1;
}

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

void File::cleanup() {
    std::string root;
    std::optional<platform::Tree> tree; // one for all paths that start from the same root
    while (!sm_extractedFiles.empty()) {
        std::string path = sm_extractedFiles.back();
        bool const isDirectory = path.ends_with('\\');
        if (isDirectory)
            path.pop_back();
        std::size_t const below = privatePart(path);
        bool const isPrivate = below != std::string::npos;
        std::string const start = isPrivate ? path.substr(0, below) : File::getFileDir(path);
        if (!tree || start != root) {
            tree.emplace(start, isPrivate ? platform::Tree::Private : platform::Tree::Own);
            root = start;
        }
        path.erase(0, start.size());
        if (isDirectory)
            tree->removeDirectory(path);
        else
            tree->removeFile(path);
        sm_extractedFiles.pop_back();
    }
}

// Callers know the two as members of an object, although they use nothing of it.

void File::forced_cleanup() {
    auto const root = platform::commonDataFolder(kTemporaryRoot, platform::FolderQuery::Create);
    if (!root)
        return;
    std::string const dataFolder = root->substr(0, root->size() - std::string_view(kTemporaryRoot).size());
    platform::Tree(dataFolder, platform::Tree::Private).removeTree(kTemporaryRoot);
}

void File::forced_remove_directory(char const* directory) {
    std::string path = directory;
    while (path.ends_with('\\') || path.ends_with('/'))
        path.pop_back();
    std::string const above = File::getFileDir(path);
    platform::Tree(above, platform::Tree::Own).removeTree(path.substr(above.size()));
}

} // namespace Zel
