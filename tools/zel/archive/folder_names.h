// The names in folders of the host, as a library that ignores case finds them.
#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace zel {

/// Reads each folder once, when it is first asked about.
class FolderNames {
public:
    /// The name that the library finds in a folder for `name`: the one in lower case or, when there is none,
    /// the first in byte order of those that differ in case alone. `name` itself when there is none of these
    /// either.
    std::string found(std::filesystem::path const& folder, std::string const& name);

private:
    using Names = std::map<std::string, std::string>; // the name that is found, by itself in lower case

    static Names namesIn(std::filesystem::path const& folder);

    std::map<std::filesystem::path, Names> m_folders;
};

} // namespace zel
