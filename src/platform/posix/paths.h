// The library's paths on a POSIX host, and lookup that ignores case.
#pragma once

#include <cerrno>
#include <optional>
#include <string>
#include <sys/types.h>

namespace Zel::platform {

/// The host's path for one of the library's: z:\a is /a, a\b is a/b below the working directory. Nothing for
/// another drive, for a server, and for a path with a zero byte: those name nothing that exists.
std::optional<std::string> toHostPath(std::string const& path);

/// The library's path for an absolute path of the host; nothing when a colon or a backslash in it would lead
/// elsewhere.
std::optional<std::string> fromHostPath(std::string const& hostPath);

/// The existing file or directory that `hostPath` names when case is ignored. Component by component, the
/// exact name comes first, then the first one in byte order that differs in ASCII case alone.
std::optional<std::string> matchIgnoringCase(std::string const& hostPath);

/// The same of a path whose exact names are known to lead nowhere.
std::optional<std::string> matchMissing(std::string const& hostPath);

/// Where a new file of that name belongs: the directory found by matchIgnoringCase, the name as it stands.
std::optional<std::string> placeIgnoringCase(std::string const& hostPath);

/// The permissions of a new directory, before the umask. What lies below the machine-wide data folder is
/// private to the user who runs the program.
mode_t directoryMode(std::string const& hostPath);

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
    auto const matched = matchMissing(*exact);
    return matched ? act(matched->c_str()) : -1;
}

} // namespace Zel::platform
