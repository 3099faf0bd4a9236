// Where the entries of an archive go below a directory.
#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace zel {

/// Gives each entry its file, and refuses those that belong nowhere.
class Unpacking {
public:
    explicit Unpacking(std::filesystem::path directory);

    /// The file of an entry, whose directories are made. Throws Failure, a finding, when the name leads out
    /// of the directory, a link or a file stands where it needs a directory, or an earlier entry has the same
    /// file on hosts that do not tell case.
    std::filesystem::path place(std::string const& entryName);

private:
    std::filesystem::path m_directory;
    std::map<std::string, std::string> m_placed; ///< the entry placed under each folded name
};

} // namespace zel
