// Setting the data directory and mounting archives for the commands on scripts.

#include "script_environment.h"

#include "host_path.h"

#include <algorithm>
#include <filesystem>
#include <zel/file.h>

namespace zel {

namespace fs = std::filesystem;

ScriptEnvironment::ScriptEnvironment(ScriptPlaces const& places) : m_data(places.data) {
    // Full paths, as names start at the data directory from then on.
    std::vector<std::string> fullPaths;
    for (std::string const& archive : places.archives) {
        Zel::Path path(Zel::File::getCurrentDir());
        path.append(libraryName(archive));
        fullPaths.push_back(path.str());
    }
    Zel::File::setDataDir(Zel::File::getCurrentDir());
    Zel::File::setDataDir(fs::path(places.data).lexically_normal().string());
    for (std::string const& path : fullPaths)
        m_archives.emplace_back(path);
}

std::string ScriptEnvironment::hostPath(std::string const& name) const {
    std::string relative = name;
    std::replace(relative.begin(), relative.end(), '\\', '/');
    fs::path const path = fs::path(m_data) / relative;
    return fs::exists(path) ? path.string() : name;
}

} // namespace zel
