// The host of the tests: Windows.

#include "support/host.h"

#include <cstdlib>
#include <io.h>
#include <objbase.h>

namespace test {

namespace fs = std::filesystem;

void chooseCommonDataFolder(fs::path const& /*directory*/) {} // the shell's own: Wine's prefix is private

namespace {

std::string environment(char const* name) {
    char const* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

} // namespace

fs::path commonDataFolder() { return environment("ProgramData"); }

std::string computerName() { return environment("COMPUTERNAME"); }

int openDescriptors() {
    int count = 0;
    for (int descriptor = 0; descriptor < 512; ++descriptor)
        count += _get_osfhandle(descriptor) != -1 ? 1 : 0;
    return count;
}

bool isPrivate(fs::path const& /*directory*/) { return true; }

std::string localeWithAComma(fs::path const& /*directory*/) { return "German"; }

bool hasReservedNames() { return true; }

std::string libraryPath(fs::path const& path) { return fs::absolute(path).make_preferred().string(); }

bool takesHostileJpeg() { return false; }

ImagingThread::ImagingThread() { CoInitialize(nullptr); }
ImagingThread::~ImagingThread() { CoUninitialize(); }

} // namespace test
