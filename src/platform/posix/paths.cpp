// Between the library's paths and the host's, and lookup that ignores case.

#include "platform/posix/paths.h"

#include "platform/ascii.h"
#include "platform/path_parts.h"

#include <algorithm>
#include <dirent.h>
#include <memory>
#include <unistd.h>

namespace Zel::platform {
namespace {

struct DirectoryCloser {
    void operator()(DIR* directory) const { closedir(directory); }
};
using Directory = std::unique_ptr<DIR, DirectoryCloser>;

/// "" is the working directory.
Directory openDirectory(std::string const& path) {
    return Directory(opendir(path.empty() ? "." : path.c_str()));
}

/// The entry of a directory ("" for the working directory) that is called `name` when case is ignored.
std::optional<std::string> matchEntry(std::string const& directory, std::string const& name) {
    std::string const exact = directory + name;
    if (access(exact.c_str(), F_OK) == 0)
        return exact;

    Directory const entries = openDirectory(directory);
    if (!entries)
        return std::nullopt;
    std::string const wanted = toAsciiLowerCase(name);
    std::optional<std::string> best;
    while (dirent const* entry = readdir(entries.get())) {
        if (toAsciiLowerCase(entry->d_name) == wanted && (!best || entry->d_name < *best))
            best = entry->d_name;
    }
    if (best)
        best->insert(0, directory);
    return best;
}

} // namespace

std::optional<std::string> toHostPath(std::string const& path) {
    if (hasZeroByte(path))
        return std::nullopt;
    std::string host = path;
    std::replace(host.begin(), host.end(), '\\', '/');
    if (host.starts_with("//"))
        return std::nullopt;
    if (host.substr(0, host.find('/')).find(':') == std::string::npos)
        return host;
    if (!host.starts_with("z:") && !host.starts_with("Z:"))
        return std::nullopt;
    host.erase(0, 2);
    return host.empty() ? "/" : host;
}

std::optional<std::string> fromHostPath(std::string const& hostPath) {
    if (hostPath.find_first_of(":\\") != std::string::npos)
        return std::nullopt;
    std::string path = "z:" + hostPath;
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

std::optional<std::string> matchIgnoringCase(std::string const& hostPath) {
    std::string matched = hostPath.starts_with('/') ? "/" : "";
    for (PathParts parts(hostPath); parts.next();) {
        if (parts.part().empty())
            continue;
        auto const entry = matchEntry(matched, std::string(parts.part()));
        if (!entry)
            return std::nullopt;
        matched = *entry + "/";
    }
    if (matched.size() > 1)
        matched.pop_back();
    return matched;
}

std::optional<std::string> placeIgnoringCase(std::string const& hostPath) {
    std::size_t const nameStart = hostPath.rfind('/') + 1; // 0 when there is no separator
    auto const directory = matchIgnoringCase(hostPath.substr(0, nameStart));
    if (!directory)
        return std::nullopt;
    bool const needsSeparator = !directory->empty() && !directory->ends_with('/');
    return *directory + (needsSeparator ? "/" : "") + hostPath.substr(nameStart);
}

} // namespace Zel::platform
