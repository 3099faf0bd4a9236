// Streams and files on POSIX hosts: each call tries the exact name first, which is all it costs when it is
// there, and looks for a name that differs in case only when that fails.

#include "platform/platform.h"
#include "platform/posix/paths.h"

#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Zel::platform {
namespace {

int openForReading(std::string const& path) {
    // Not blocking keeps a pipe without a writer from holding up its reader; files do not notice.
    return withExistingPath(path,
                            [](char const* host) { return open(host, O_RDONLY | O_NONBLOCK | O_CLOEXEC); });
}

/// Opens what is there, whatever its case, before it makes a file of the given name. A link that leads to no
/// file yet is followed.
int openForWriting(std::string const& path, int disposition) {
    int const flags = O_WRONLY | disposition | O_CLOEXEC;
    auto const exact = toHostPath(path);
    int const existing = exact ? open(exact->c_str(), flags) : -1;
    if (!exact || existing != -1 || errno != ENOENT)
        return existing;
    auto const matched = matchIgnoringCase(*exact);
    auto const place = matched ? matched : placeIgnoringCase(*exact);
    return place ? open(place->c_str(), flags | O_CREAT, 0666) : -1;
}

bool isDirectory(int descriptor) {
    struct stat status;
    return fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

/// The stream of a descriptor, which is closed when there can be none.
std::FILE* streamOf(int descriptor, char const* mode) {
    std::FILE* const stream = isDirectory(descriptor) ? nullptr : fdopen(descriptor, mode);
    if (stream == nullptr)
        close(descriptor);
    return stream;
}

} // namespace

std::FILE* openStream(std::string const& path, char const* mode) {
    int const descriptor =
        mode[0] == 'r' ? openForReading(path) : openForWriting(path, mode[0] == 'a' ? O_APPEND : O_TRUNC);
    return descriptor != -1 ? streamOf(descriptor, mode) : nullptr;
}

std::int64_t streamLength(std::FILE* stream) {
    struct stat status;
    return fstat(fileno(stream), &status) == 0 ? status.st_size : -1;
}

bool pathExists(std::string const& path) {
    struct stat status;
    return withExistingPath(path, [&status](char const* host) { return stat(host, &status); }) == 0;
}

std::FILE* createStream(std::string const& path) {
    auto const exact = toHostPath(path);
    auto const place = exact ? placeIgnoringCase(*exact) : std::nullopt;
    int const descriptor = place ? open(place->c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666) : -1;
    return descriptor != -1 ? streamOf(descriptor, "wb") : nullptr;
}

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
