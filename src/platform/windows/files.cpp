// Streams and files on Windows: the C runtime's calls on the path as it stands.

#include "platform/path_parts.h"
#include "platform/platform.h"
#include "platform/stream_mode.h"

#include <direct.h>
#include <sys/stat.h>

namespace Zel::platform {

Stream openStream(std::string const& path, Open purpose) {
    return Stream(hasZeroByte(path) ? nullptr : std::fopen(path.c_str(), modeOf(purpose)));
}

bool pathExists(std::string const& path) {
    struct _stat64 status;
    return !hasZeroByte(path) && _stat64(path.c_str(), &status) == 0;
}

bool changeDirectory(std::string const& path) { return !hasZeroByte(path) && _chdir(path.c_str()) == 0; }

std::optional<std::string> currentDirectory() {
    char buffer[261];
    if (_getcwd(buffer, sizeof buffer) == nullptr)
        return std::nullopt;
    return buffer;
}

} // namespace Zel::platform
