// The whole contract with the host. windows/ and posix/ each implement it; a third platform is a third
// folder.
//
// Paths are the library's own: drive:\dir\file or dir\file, "/" allowed. No function throws for a host that
// refuses: each one tells in its result. A path with a zero byte in it names nothing on any platform.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>

namespace Zel::platform {

struct StreamCloser {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};
/// A C stream that one scope owns.
using Stream = std::unique_ptr<std::FILE, StreamCloser>;

/// Opens a file with a mode of the C library ("rb", "wb", "w" or "a"). Null on failure, which opening a
/// directory is. The caller closes it.
std::FILE* openStream(std::string const& path, char const* mode);

/// The length in bytes of the file behind a stream; -1 when the host cannot tell.
std::int64_t streamLength(std::FILE* stream);

/// Whether a file or directory of that name exists.
bool pathExists(std::string const& path);

/// Whether a directory of that name cannot be made, because something has the name.
bool isTaken(std::string const& path);

/// Removes a file. A failure is ignored.
void removeFile(std::string const& path);

/// Makes a directory the working directory of the process. False on failure.
bool changeDirectory(std::string const& path);

/// The working directory of the process, of at most 260 characters; nothing when it is longer or gone.
std::optional<std::string> currentDirectory();

/// The directory of the running program, with a final separator.
std::optional<std::string> startupDirectory();

enum class FolderQuery {
    Locate, ///< tell the path, whether or not it exists
    Create  ///< make whatever of it is missing
};

/// A sub-folder of the machine-wide data folder, without a final separator.
std::optional<std::string> commonDataFolder(std::string const& subFolder, FolderQuery query);

/// The name of this computer.
std::optional<std::string> computerName();

/// The time of day in units of 100 ns since 1601-01-01 UTC.
std::uint64_t systemTime();

/// The finest steady counter of the host, in units of its own.
std::uint64_t performanceCounter();

} // namespace Zel::platform
