// The host of the tests: POSIX.

#include "support/host.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

namespace test {

namespace fs = std::filesystem;

void chooseCommonDataFolder(fs::path const& directory) { setenv("ZEL_COMMON_DATA", directory.c_str(), 1); }

fs::path commonDataFolder() { return std::getenv("ZEL_COMMON_DATA"); }

std::string computerName() {
    char name[HOST_NAME_MAX + 1] = {};
    gethostname(name, sizeof name);
    return name;
}

int openDescriptors() {
    return static_cast<int>(std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
}

bool isPrivate(fs::path const& directory) {
    struct stat status = {};
    return stat(directory.c_str(), &status) == 0 && (status.st_mode & 0777) == 0700;
}

bool hasReservedNames() { return false; }

std::string libraryPath(fs::path const& path) {
    std::string text = "z:" + fs::absolute(path).string();
    std::replace(text.begin(), text.end(), '/', '\\');
    return text;
}

bool takesHostileJpeg() { return true; }

ImagingThread::ImagingThread() = default;
ImagingThread::~ImagingThread() = default;

} // namespace test
