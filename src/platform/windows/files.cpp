// Streams and files on Windows: the C runtime's calls on the path as it stands.

#include "platform/platform.h"
#include "platform/windows/paths.h"

#include <windows.h>

#include <direct.h>
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

namespace Zel::platform {

std::FILE* openStream(std::string const& path, char const* mode) {
    return isCut(path) ? nullptr : std::fopen(path.c_str(), mode);
}

std::int64_t streamLength(std::FILE* stream) { return _filelengthi64(_fileno(stream)); }

bool pathExists(std::string const& path) {
    struct _stat64 status;
    return !isCut(path) && _stat64(path.c_str(), &status) == 0;
}

std::FILE* createStream(std::string const& path) {
    if (isCut(path))
        return nullptr;
    _unlink(path.c_str()); // mostly there is nothing
    int const flags = _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT;
    int const descriptor = _open(path.c_str(), flags, _S_IREAD | _S_IWRITE);
    if (descriptor == -1)
        return nullptr;
    std::FILE* const stream = _fdopen(descriptor, "wb");
    if (stream == nullptr) {
        _close(descriptor);
        _unlink(path.c_str());
    }
    return stream;
}

std::FILE* overwriteStream(std::string const& path, SeenDirectory& /*seen*/) {
    return openStream(path, "wb");
}

void removeFile(std::string const& path) {
    if (!isCut(path))
        _unlink(path.c_str());
}

bool changeDirectory(std::string const& path) { return !isCut(path) && _chdir(path.c_str()) == 0; }

std::optional<std::string> currentDirectory() {
    char buffer[261];
    if (_getcwd(buffer, sizeof buffer) == nullptr)
        return std::nullopt;
    return buffer;
}

} // namespace Zel::platform
