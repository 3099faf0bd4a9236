// Names of directories on POSIX hosts.

#include "platform/platform.h"
#include "platform/posix/paths.h"

#include <sys/stat.h>
#include <unistd.h>

namespace Zel::platform {

bool isTaken(std::string const& path) {
    struct stat status;
    return withExistingPath(path, [&status](char const* host) { return lstat(host, &status); }) == 0;
}

bool isFileName(std::string const& /*name*/) { return true; } // every name is that of a file

} // namespace Zel::platform
