// Where the scripts of a command are found: a data directory, and archives mounted there.
#pragma once

#include "archive/folder_names.h"

#include <deque>
#include <string>
#include <vector>
#include <zel/archive.h>

namespace zel {

struct ScriptSources {
    std::string data;
    std::vector<std::string> archives;
};

/// The archives stay mounted as long as this object lives. The data directory stays set.
class ScriptEnvironment {
public:
    /// Throws the library's exceptions for an archive that cannot be mounted.
    explicit ScriptEnvironment(ScriptSources const& sources);

    /// Makes sure that a script can be opened. Throws Failure when it is no regular file or when another file
    /// would be opened in its place (see refuseOtherCase), and what opening it throws.
    void require(std::string const& name);

    /// The path under which the host finds a script; the name itself when only an archive has it.
    std::string hostPath(std::string const& name) const;

private:
    std::string m_data;
    std::deque<Zel::Archive> m_archives;
    FolderNames m_folders;
};

} // namespace zel
