// The directories that all files share, and which names exist.

#include "file/names.h"
#include "file/registry.h"
#include "platform/platform.h"

#include <zel/file.h>

namespace Zel {

Path File::sm_datadir;
Path File::sm_currentDir;
int File::sm_archiveonly = 1;

void File::setArchiveOnly(int archiveOnly) { sm_archiveonly = archiveOnly; }

int File::getArchiveOnly() { return sm_archiveonly; }

void File::setDataDir(std::string directory) { sm_datadir.append(directory); }

std::string File::getDataDir() { return withFinalSeparator(sm_datadir.str()); }

void File::setCurrentDir(std::string const& directory) {
    sm_currentDir.append(directory);
    if (Archive::getArchiveCount() == 0 && !platform::changeDirectory(directory))
        throw FileException_DirectoryNotFound(directory.c_str());
}

std::string File::getCurrentDir() {
    if (Archive::getArchiveCount() != 0)
        return sm_currentDir.str();
    auto const directory = platform::currentDirectory();
    if (!directory)
        throw FileException_GetCurrentDirFailed();
    sm_currentDir.append(*directory);
    return withFinalSeparator(*directory);
}

std::string File::getStartupDir() {
    auto const directory = platform::startupDirectory();
    if (!directory)
        throw FileException_GetStartupDirFailed();
    return *directory;
}

bool File::exists(std::string const& name) {
    std::string const path = resolveName(name);
    if (hasZeroByte(name))
        return false;
    if (findNewestArchive([&path](Archive const& archive) { return archive.hasFile(path); }) != nullptr)
        return true;
    return getArchiveOnly() == 0 && platform::pathExists(path);
}

} // namespace Zel
