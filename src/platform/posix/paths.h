// The library's paths on a POSIX host, and lookup that ignores case.
#pragma once

#include <optional>
#include <string>

namespace Zel::platform {

/// The host's path for one of the library's: z:\a is /a, a\b is a/b below the working directory. Nothing for
/// another drive, for a server, and for a path with a zero byte: those name nothing that exists.
std::optional<std::string> toHostPath(std::string const& path);

/// The library's path for an absolute path of the host.
std::string fromHostPath(std::string const& hostPath);

/// The existing file or directory that `hostPath` names when case is ignored. Component by component, the
/// exact name comes first, then the first one in byte order that differs in ASCII case alone.
std::optional<std::string> matchIgnoringCase(std::string const& hostPath);

/// Where a new file of that name belongs: the directory found by matchIgnoringCase, the name as it stands.
std::optional<std::string> placeIgnoringCase(std::string const& hostPath);

} // namespace Zel::platform
