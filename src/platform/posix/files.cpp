// Streams and files on POSIX hosts: each call tries the exact name first, which is all it costs when it is
// there, and looks for a name that differs in case only when that fails.

#include "platform/platform.h"
#include "platform/posix/paths.h"
#include "platform/stream_mode.h"

#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Zel::platform {
namespace {

/// A descriptor, -1 when there is none, and the host's path of the file when that was made for it.
struct Opened {
    int descriptor = -1;
    std::string made;
};

/// Opens what is there, whatever its case, before it makes a file of the given name. A link that leads to no
/// file yet is followed.
Opened openForWriting(std::string const& path) {
    constexpr int kFlags = O_WRONLY | O_TRUNC | O_CLOEXEC;
    auto const exact = toHostPath(path);
    int const existing = exact ? open(exact->c_str(), kFlags) : -1;
    if (!exact || existing != -1 || errno != ENOENT)
        return {existing, {}};
    if (auto const matched = matchMissing(*exact))
        return {open(matched->c_str(), kFlags | O_CREAT, 0666), {}};
    Opened opened;
    if (auto place = placeIgnoringCase(*exact)) {
        opened.made = std::move(*place); // first: once a file is open, nothing throws
        opened.descriptor = open(opened.made.c_str(), kFlags | O_CREAT, 0666);
    }
    return opened;
}

bool isDirectory(int descriptor) {
    struct stat status;
    return fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

/// The stream of an open file; when there can be none, that is closed, and goes away if it was made.
Stream streamOf(Opened const& opened, Open purpose) {
    if (opened.descriptor == -1)
        return nullptr;
    Stream stream(isDirectory(opened.descriptor) ? nullptr : fdopen(opened.descriptor, modeOf(purpose)));
    if (!stream) {
        close(opened.descriptor);
        if (!opened.made.empty())
            unlink(opened.made.c_str());
    }
    return stream;
}

} // namespace

Stream openStream(std::string const& path, Open purpose) { return streamOf(openForWriting(path), purpose); }

bool pathExists(std::string const& path) {
    struct stat status;
    return withExistingPath(path, [&status](char const* host) { return stat(host, &status); }) == 0;
}

bool changeDirectory(std::string const& path) {
    return withExistingPath(path, [](char const* host) { return chdir(host); }) == 0;
}

std::optional<std::string> currentDirectory() {
    char buffer[PATH_MAX];
    if (getcwd(buffer, sizeof buffer) == nullptr)
        return std::nullopt;
    auto path = fromHostPath(buffer);
    // The limit that callers know from the other platform: a directory that works here works there.
    if (path && path->size() > 260)
        return std::nullopt;
    return path;
}

} // namespace Zel::platform
