// Sets the data directory and mounts archives for the commands on scripts.

#include "script/environment.h"

#include "archive/names.h"
#include "command_line/failure.h"
#include "command_line/printable_text.h"
#include "host/host_path.h"

#include <filesystem>
#include <system_error>
#include <zel/file.h>

namespace zel {

namespace fs = std::filesystem;

ScriptEnvironment::ScriptEnvironment(ScriptSources const& sources) : m_data(sources.data) {
    // Full paths, taken before the data directory is set: from then on names start there.
    std::vector<std::string> fullPaths;
    for (std::string const& archive : sources.archives) {
        Zel::Path path(Zel::File::getCurrentDir());
        path.append(libraryName(archive));
        fullPaths.push_back(path.str());
    }
    Zel::File::setDataDir(Zel::File::getCurrentDir());
    Zel::File::setDataDir(fs::path(sources.data).lexically_normal().string());
    for (std::string const& path : fullPaths)
        m_archives.emplace_back(path);
}

void ScriptEnvironment::require(std::string const& name) {
    if (!Zel::File::exists(name)) { // which looks into the archives, too
        fs::path const given = fs::path(m_data) / name;
        refuseOtherCase(given.string(), m_folders);
        fs::path const path = fs::absolute(given).lexically_normal();
        fs::path const folder = path.parent_path();
        fs::path const found = folder / m_folders.found(folder, path.filename().string());
        std::error_code error; // what cannot be looked at cannot be opened
        if (fs::exists(found, error) && !fs::is_regular_file(found, error))
            throw Failure(kOperatingFailure,
                          "cannot read " + printableName(name) + ": it is no regular file");
    }
    try {
        Zel::File const file(name, Zel::File::READ_TEXT);
    } catch (
        Zel::FileException_FileCorrupted const&) { // the parser meets these two as well, and reports them
    } catch (Zel::FileException_ReadError const&) {
    }
}

std::string ScriptEnvironment::hostPath(std::string const& name) const {
    std::string const relative = withSlashes(name);
    for (std::string const& spelling : {relative, toLowerCase(relative)}) {
        fs::path const path = fs::path(m_data) / spelling;
        std::error_code error; // what cannot be looked at is not there
        if (fs::exists(path, error))
            return path.string();
    }
    return name;
}

} // namespace zel
