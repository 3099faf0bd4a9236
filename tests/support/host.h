// What the tests ask the host directly; one file a platform.
#pragma once

#include <filesystem>
#include <string>

namespace test {

/// Keeps the machine-wide data folder of this process inside `directory` where the host lets it be chosen.
void chooseCommonDataFolder(std::filesystem::path const& directory);

std::filesystem::path commonDataFolder();
std::string computerName();

/// Descriptors of files and directories that this process holds open. Pipes may be a sanitizer's.
int openDescriptors();

/// Whether a directory is open to nobody but its owner; true where the host has no such modes.
bool isPrivate(std::filesystem::path const& directory);

/// Whether the host keeps names of devices, and names of nothing but dots and blanks, to itself.
bool hasReservedNames();

/// The name of a locale whose decimal point is a comma; on POSIX hosts it is made in `directory`.
std::string localeWithAComma(std::filesystem::path const& directory);

/// The path as the library writes it.
std::string libraryPath(std::filesystem::path const& path);

/// Whether hostile pictures may be given to the host's JPEG codec. Not to Wine's, which overruns its buffers.
bool takesHostileJpeg();

/// Lets the calling thread use the host's image codecs while this object lives.
class ImagingThread {
public:
    ImagingThread();
    ImagingThread(ImagingThread const&) = delete;
    ImagingThread& operator=(ImagingThread const&) = delete;
    ~ImagingThread();
};

} // namespace test
