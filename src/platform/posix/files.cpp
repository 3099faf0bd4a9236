// Streams and files on POSIX hosts: each call tries the exact name first, which is all it costs when it is
// there, and looks for a name that differs in case only when that fails.

#include "platform/platform.h"
#include "platform/posix/paths.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Zel::platform {
namespace {

/// Calls `act` with the exact host path and, when nothing is there, with the one found by ignoring case;
/// `act` returns -1 when it fails.
template <class Act>
int withExistingPath(std::string const& path, Act act) {
    auto const exact = toHostPath(path);
    if (!exact)
        return -1;
    int const result = act(exact->c_str());
    if (result != -1 || errno != ENOENT)
        return result;
    auto const matched = matchIgnoringCase(*exact);
    return matched ? act(matched->c_str()) : -1;
}

int openForReading(std::string const& path) {
    // Not blocking keeps a pipe without a writer from holding up its reader; files do not notice.
    return withExistingPath(path,
                            [](char const* host) { return open(host, O_RDONLY | O_NONBLOCK | O_CLOEXEC); });
}

/// Opens what is there, whatever its case, before it makes a file of the given name. A link that leads to no
/// file yet is followed.
int openForWriting(std::string const& path, int disposition) {
    int const flags = O_WRONLY | disposition | O_CLOEXEC;
    int const existing = withExistingPath(path, [flags](char const* host) { return open(host, flags); });
    auto const exact = toHostPath(path);
    if (existing != -1 || !exact)
        return existing;
    auto const matched = matchIgnoringCase(*exact);
    auto const place = matched ? matched : placeIgnoringCase(*exact);
    return place ? open(place->c_str(), flags | O_CREAT, 0666) : -1;
}

bool isDirectory(int descriptor) {
    struct stat status;
    return fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

std::FILE* openStream(std::string const& path, char const* mode) {
    int const descriptor =
        mode[0] == 'r' ? openForReading(path) : openForWriting(path, mode[0] == 'a' ? O_APPEND : O_TRUNC);
    if (descriptor == -1)
        return nullptr;

    std::FILE* const stream = isDirectory(descriptor) ? nullptr : fdopen(descriptor, mode);
    if (stream == nullptr)
        close(descriptor);
    return stream;
}

std::int64_t streamLength(std::FILE* stream) {
    struct stat status;
    return fstat(fileno(stream), &status) == 0 ? status.st_size : -1;
}

bool pathExists(std::string const& path) {
    struct stat status;
    return withExistingPath(path, [&status](char const* host) { return stat(host, &status); }) == 0;
}

bool isTaken(std::string const& path) { return pathExists(path); }

void removeFile(std::string const& path) {
    withExistingPath(path, [](char const* host) { return unlink(host); });
}

bool changeDirectory(std::string const& path) {
    return withExistingPath(path, [](char const* host) { return chdir(host); }) == 0;
}

std::optional<std::string> currentDirectory() {
    char buffer[PATH_MAX];
    if (getcwd(buffer, sizeof buffer) == nullptr)
        return std::nullopt;
    std::string directory = fromHostPath(buffer);
    // The limit that callers know from the other platform: a directory that works here works there.
    if (directory.size() > 260)
        return std::nullopt;
    return directory;
}

} // namespace Zel::platform
