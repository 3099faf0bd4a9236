// A tree is removed from within: each directory is opened from the one above, so that no link can lead the
// removal elsewhere, not even one that appears meanwhile. Only the deepest directory is held open, as trees
// may be deeper than a process may have descriptors.

#include "platform/posix/removal.h"

#include "platform/posix/descriptor.h"
#include "platform/posix/entry_names.h"

#include <cerrno>
#include <string>
#include <utility>
#include <vector>

namespace Zel::platform {
namespace {

constexpr int kOpenDirectory = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

/// Opens a directory to remove what it holds, even when it is closed to its owner or read-only.
Descriptor openForRemoval(int parent, char const* name) {
    Descriptor directory(openat(parent, name, kOpenDirectory));
    if (!directory.isOpen() && errno == EACCES) {
        fchmodat(parent, name, S_IRWXU, AT_SYMLINK_NOFOLLOW);
        directory = Descriptor(openat(parent, name, kOpenDirectory));
    }
    if (directory.isOpen())
        fchmod(directory.get(), S_IRWXU);
    return directory;
}

/// A directory on the way down, and what is left to remove of it.
struct Level {
    std::string name;
    Identity identity;
    std::vector<std::string> entries;
};

/// Enters the level of an open directory.
bool enter(std::vector<Level>& levels, std::string name, Descriptor const& directory) {
    struct stat status;
    if (fstat(directory.get(), &status) != 0)
        return false;
    bool isWhole = false; // what cannot be read stays
    levels.push_back({std::move(name), identityOf(status), entryNames(directory.get(), isWhole)});
    return true;
}

/// Goes to the directory above. False when that is not the one that was come from: somebody has moved one.
bool goUp(Descriptor& directory, Level const& above) {
    directory = Descriptor(openat(directory.get(), "..", kOpenDirectory));
    struct stat status;
    return fstat(directory.get(), &status) == 0 && identityOf(status) == above.identity;
}

/// Removes what a directory holds.
void removeEntries(Descriptor directory) {
    std::vector<Level> levels;
    if (!enter(levels, {}, directory))
        return;
    for (;;) {
        if (levels.back().entries.empty()) {
            std::string const emptied = std::move(levels.back().name);
            levels.pop_back();
            if (levels.empty() || !goUp(directory, levels.back()))
                return;
            unlinkat(directory.get(), emptied.c_str(), AT_REMOVEDIR);
            continue;
        }
        std::string name = std::move(levels.back().entries.back());
        levels.back().entries.pop_back();
        if (unlinkat(directory.get(), name.c_str(), 0) == 0)
            continue; // everything but a directory, links included
        Descriptor below = openForRemoval(directory.get(), name.c_str());
        if (below.isOpen() && enter(levels, std::move(name), below))
            directory = std::move(below);
    }
}

} // namespace

void removeBelow(int directory, char const* name) {
    struct stat status;
    if (fstatat(directory, name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return;
    if (S_ISLNK(status.st_mode)) {
        unlinkat(directory, name, 0);
        return;
    }
    if (Descriptor tree = openForRemoval(directory, name); tree.isOpen())
        removeEntries(std::move(tree));
    unlinkat(directory, name, AT_REMOVEDIR);
}

} // namespace Zel::platform
