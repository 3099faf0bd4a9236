// The host of the tests: POSIX.

#include "support/host.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <fstream>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace test {

namespace fs = std::filesystem;

void chooseCommonDataFolder(fs::path const& directory) {
    setenv("ZEL_COMMON_DATA", directory.c_str(), 1);
    umask(S_IWGRP | S_IWOTH); // what tests make there is closed to others, as the library wants it
}

fs::path commonDataFolder() { return std::getenv("ZEL_COMMON_DATA"); }

std::string computerName() {
    char name[HOST_NAME_MAX + 1] = {};
    gethostname(name, sizeof name);
    return name;
}

int openDescriptors() {
    fs::directory_iterator const descriptors("/proc/self/fd");
    return static_cast<int>(std::count_if(begin(descriptors), end(descriptors), [](auto const& descriptor) {
        std::error_code closed; // the directory's own
        return fs::read_symlink(descriptor, closed).string().starts_with('/');
    }));
}

bool isPrivate(fs::path const& directory) {
    struct stat status = {};
    return stat(directory.c_str(), &status) == 0 && (status.st_mode & 0777) == 0700;
}

std::string localeWithAComma(fs::path const& directory) {
    std::ofstream(directory / "comma.src") << "LC_NUMERIC\n"
                                              "decimal_point \",\"\nthousands_sep \".\"\ngrouping 3\n"
                                              "END LC_NUMERIC\n";
    // Made all the same, localedef complains that the other categories are missing.
    std::string const compile = "cd '" + directory.string() +
                                "' && localedef --force --quiet --no-archive --inputfile=comma.src ./comma";
    [[maybe_unused]] int const status = std::system((compile + " >localedef.log 2>&1").c_str());
    setenv("LOCPATH", fs::absolute(directory).c_str(), 1);
    return "comma";
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
