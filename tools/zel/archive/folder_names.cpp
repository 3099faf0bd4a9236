// Reads the folders of the host.

#include "archive/folder_names.h"

#include "archive/names.h"

#include <algorithm>
#include <system_error>

namespace zel {

namespace fs = std::filesystem;

std::string FolderNames::found(fs::path const& folder, std::string const& name) {
    auto known = m_folders.find(folder);
    if (known == m_folders.end())
        known = m_folders.emplace(folder, namesIn(folder)).first;
    std::string const lowerCase = toLowerCase(name);
    auto const other = known->second.find(lowerCase);
    if (other == known->second.end())
        return name;
    return other->second == lowerCase ? lowerCase : std::min(name, other->second);
}

FolderNames::Names FolderNames::namesIn(fs::path const& folder) {
    Names names;
    std::error_code error; // the library finds nothing in a folder that cannot be read, either
    for (fs::directory_entry const& entry : fs::directory_iterator(folder, error)) {
        std::string const name = entry.path().filename().string();
        std::string const lowerCase = toLowerCase(name);
        std::string& first = names.emplace(lowerCase, name).first->second;
        if (first != lowerCase && (name == lowerCase || name < first))
            first = name;
    }
    return names;
}

} // namespace zel
