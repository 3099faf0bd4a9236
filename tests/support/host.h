// What the tests ask the host directly; one file a platform.
#pragma once

#include <filesystem>
#include <string>

namespace test {

/// Keeps the machine-wide data folder of this process inside `directory` where the host lets it be chosen.
void chooseCommonDataFolder(std::filesystem::path const& directory);

std::filesystem::path commonDataFolder();
std::string computerName();

/// File descriptors that this process holds open.
int openDescriptors();

/// Whether a directory is open to nobody but its owner; true where the host has no such modes.
bool isPrivate(std::filesystem::path const& directory);

/// The path as the library writes it.
std::string libraryPath(std::filesystem::path const& path);

} // namespace test
