// Making and removing directories on POSIX hosts. A tree is removed from within: each directory is opened
// from the one above, so that no link can lead the removal elsewhere, not even one that appears meanwhile.

#include "platform/platform.h"
#include "platform/posix/paths.h"

#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace Zel::platform {
namespace {

/// A descriptor that one scope owns.
class Descriptor {
public:
    explicit Descriptor(int value) : m_value(value) {}
    Descriptor(Descriptor const&) = delete;
    Descriptor& operator=(Descriptor const&) = delete;
    ~Descriptor() { reset(-1); }

    int get() const { return m_value; }
    void reset(int value) {
        if (m_value != -1)
            close(m_value);
        m_value = value;
    }

private:
    int m_value;
};

constexpr int kOpenDirectory = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

/// Opens a directory, wherever `path` leads from `parent`, to remove what it holds, even when it is closed to
/// its owner or read-only.
int openForRemoval(int parent, char const* path) {
    int directory = openat(parent, path, kOpenDirectory);
    if (directory == -1 && errno == EACCES) {
        fchmodat(parent, path, S_IRWXU, AT_SYMLINK_NOFOLLOW);
        directory = openat(parent, path, kOpenDirectory);
    }
    if (directory != -1)
        fchmod(directory, S_IRWXU);
    return directory;
}

std::vector<std::string> entryNames(int directory) {
    struct Closer {
        void operator()(DIR* entries) const { closedir(entries); }
    };
    int const own = openat(directory, ".", kOpenDirectory); // closed with the entries
    std::unique_ptr<DIR, Closer> const entries(own != -1 ? fdopendir(own) : nullptr);
    std::vector<std::string> names;
    while (dirent const* entry = entries ? readdir(entries.get()) : nullptr) {
        if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0)
            names.emplace_back(entry->d_name);
    }
    return names;
}

bool isSame(struct stat const& a, struct stat const& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

/// Removes what a directory holds. Only the deepest directory is held open, as trees may be deeper than a
/// process may have descriptors. False when the way back up is lost: somebody has moved a directory.
bool removeEntries(Descriptor& directory) {
    struct stat here;
    if (fstat(directory.get(), &here) != 0)
        return false;
    for (std::string const& name : entryNames(directory.get())) {
        if (unlinkat(directory.get(), name.c_str(), 0) == 0)
            continue; // everything but a directory, links included
        int const below = openForRemoval(directory.get(), name.c_str());
        if (below == -1)
            continue;
        directory.reset(below);
        if (!removeEntries(directory))
            return false;
        directory.reset(openat(directory.get(), "..", kOpenDirectory));
        struct stat back;
        if (fstat(directory.get(), &back) != 0 || !isSame(back, here))
            return false;
        unlinkat(directory.get(), name.c_str(), AT_REMOVEDIR);
    }
    return true;
}

} // namespace

Making makeDirectory(std::string const& path) {
    if (isTaken(path))
        return Making::Existed;
    auto const exact = toHostPath(path);
    auto const place = exact ? placeIgnoringCase(*exact) : std::nullopt;
    if (!place)
        return Making::Failed;
    if (mkdir(place->c_str(), directoryMode(*place)) == 0)
        return Making::Made;
    return errno == EEXIST ? Making::Existed : Making::Failed;
}

bool isTaken(std::string const& path) {
    struct stat status;
    return withExistingPath(path, [&status](char const* host) { return lstat(host, &status); }) == 0;
}

bool isLink(std::string const& path) {
    struct stat status;
    return withExistingPath(path, [&status](char const* host) { return lstat(host, &status); }) == 0 &&
           S_ISLNK(status.st_mode);
}

void removeDirectory(std::string const& path) {
    withExistingPath(path, [](char const* host) { return rmdir(host); });
}

void removeTree(std::string const& path) {
    if (isLink(path)) {
        removeFile(path);
        return;
    }
    Descriptor directory(
        withExistingPath(path, [](char const* host) { return openForRemoval(AT_FDCWD, host); }));
    if (directory.get() != -1)
        removeEntries(directory);
    removeDirectory(path);
}

bool isFileName(std::string const& /*name*/) { return true; } // every name is that of a file

} // namespace Zel::platform
