// The names in folders of the host, for a library that does not tell case.
#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace zel {

/// Reads each folder once, when it is first asked about.
class FolderNames {
public:
    /// The name in a folder that the library finds for `name`: the one in lower case, or else the first of
    /// those that differ in case alone.
    std::string found(std::filesystem::path const& folder, std::string const& name);

private:
    using Names = std::map<std::string, std::string>; // what is found, by the name in lower case

    static Names namesIn(std::filesystem::path const& folder);

    std::map<std::filesystem::path, Names> m_folders;
};

} // namespace zel
