// Where the scripts of a command are found: a data directory, and archives mounted there.
#pragma once

#include "folder_names.h"

#include <deque>
#include <string>
#include <vector>
#include <zel/archive.h>

namespace zel {

struct ScriptPlaces {
    std::string data;
    std::vector<std::string> archives;
};

/// Mounted as long as this object lives.
class ScriptEnvironment {
public:
    /// Throws the library's exceptions for an archive that cannot be mounted.
    explicit ScriptEnvironment(ScriptPlaces const& places);

    /// Throws Failure when a script is no regular file, or another would be in its place (see
    /// refuseOtherCase), and what opening it throws.
    void require(std::string const& name);

    /// The path under which the host finds a script, or its name when only an archive has it.
    std::string hostPath(std::string const& name) const;

private:
    std::string m_data;
    std::deque<Zel::Archive> m_archives;
    FolderNames m_folders;
};

} // namespace zel
