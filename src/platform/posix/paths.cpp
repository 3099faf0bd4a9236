// Between the library's paths and the host's, and lookup that ignores case.

#include "platform/posix/paths.h"

#include "platform/path_parts.h"
#include "platform/posix/directory_names.h"

#include <algorithm>
#include <unistd.h>

namespace Zel::platform {
namespace {

bool exists(std::string const& path) { return access(path.c_str(), F_OK) == 0; }

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

std::optional<std::string> matchMissing(std::string const& hostPath) {
    // As far as the exact names lead, which mostly is to the last one; from there on, part by part.
    std::string matched = hostPath;
    do {
        matched.resize(matched.find_last_not_of('/') + 1);
        matched.resize(matched.rfind('/') + 1); // 0 when there is no separator
    } while (!matched.empty() && !exists(matched));
    for (PathParts parts(std::string_view(hostPath).substr(matched.size())); parts.next();) {
        if (parts.part().empty())
            continue;
        if (!matched.empty() && !matched.ends_with('/'))
            matched += '/';
        auto const found = matchInDirectory(matched, std::string(parts.part()));
        if (!found)
            return std::nullopt;
        matched += *found;
    }
    return matched;
}

std::optional<std::string> matchIgnoringCase(std::string const& hostPath) {
    return exists(hostPath) ? hostPath : matchMissing(hostPath);
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
