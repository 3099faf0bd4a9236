// What directories held, remembered by each thread for itself. A directory is known by device and inode, and
// what it held counts as long as its time of change stays the same.

#include "platform/posix/directory_names.h"

#include "platform/posix/descriptor.h"
#include "platform/posix/entry_names.h"

#include <ctime>
#include <map>

namespace Zel::platform {
namespace {

/// In all directories together; the memory of one thread then takes about 10 MiB.
constexpr std::size_t kMostNames = 65536;

/// Whether a later change would get a later time. Clocks of files move in steps: of some milliseconds or,
/// where a file system keeps whole seconds, of two at most.
bool isSettled(timespec const& change) {
    constexpr long kNanosecondsPerSecond = 1'000'000'000;
    constexpr long kStep = 50'000'000;
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    long const seconds = static_cast<long>(now.tv_sec - change.tv_sec);
    if (seconds > 2)
        return true;
    if (seconds < 0) // a clock that was set back
        return false;
    return change.tv_nsec != 0 && seconds * kNanosecondsPerSecond + now.tv_nsec - change.tv_nsec > kStep;
}

class DirectoryMemory {
public:
    std::optional<std::string> match(std::string const& directory, std::string const& name) {
        char const* const path = directory.empty() ? "." : directory.c_str();
        struct stat status;
        if (stat(path, &status) != 0)
            return std::nullopt;
        Known const* const known = find(status);
        bool const mayBeExact = known == nullptr || known->names.holds(name);
        if (mayBeExact && access((directory + name).c_str(), F_OK) == 0)
            return name;
        return known != nullptr ? known->names.match(name) : read(path, name);
    }

private:
    struct Known {
        timespec change;
        DirectoryNames names;
    };

    Known const* find(struct stat const& status) const {
        auto const known = m_directories.find(identityOf(status));
        bool const isSame = known != m_directories.end() &&
                            known->second.change.tv_sec == status.st_ctim.tv_sec &&
                            known->second.change.tv_nsec == status.st_ctim.tv_nsec;
        return isSame ? &known->second : nullptr;
    }

    std::optional<std::string> read(char const* path, std::string const& name) {
        Descriptor const directory(open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        struct stat status; // from before its names are read: what changes meanwhile is noticed
        if (!directory.isOpen() || fstat(directory.get(), &status) != 0)
            return std::nullopt;
        bool const lasts = isSettled(status.st_ctim);
        DirectoryNames names(directory.get());
        auto found = names.match(name);
        if (lasts && names.isWhole() && names.size() <= kMostNames)
            remember(status, std::move(names));
        return found;
    }

    void remember(struct stat const& status, DirectoryNames names) {
        m_names += names.size();
        if (m_names > kMostNames) { // rarely
            m_directories.clear();
            m_names = names.size();
        }
        m_directories.insert_or_assign(identityOf(status), Known{status.st_ctim, std::move(names)});
    }

    std::map<Identity, Known> m_directories;
    std::size_t m_names = 0; ///< and those of directories that were read again
};

thread_local DirectoryMemory t_memory;

} // namespace

DirectoryNames::DirectoryNames(int directory) {
    for (std::string const& name : entryNames(directory, m_isWhole))
        insert(name);
}

std::optional<std::string> matchInDirectory(std::string const& directory, std::string const& name) {
    return t_memory.match(directory, name);
}

} // namespace Zel::platform
