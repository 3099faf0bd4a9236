// A file that appears under its name only when it is complete.
#pragma once

#include "host/interruption.h"

#include <filesystem>
#include <fstream>

namespace zel {

/// The file that output under this path is to replace: through links the one that they lead to, so that the
/// links stay. Throws Failure where something other than a regular file stands there, as a device does, or a
/// directory.
std::filesystem::path outputFile(std::filesystem::path path);

/// Writes to a temporary file beside the target. Unless it is committed, the temporary file goes away with
/// this object or the process, and whatever stood under the target's name stays untouched. A link under that
/// name is replaced itself.
class PendingFile {
public:
    /// Throws Failure when no file can be made there.
    explicit PendingFile(std::filesystem::path target);
    PendingFile(PendingFile const&) = delete;
    PendingFile& operator=(PendingFile const&) = delete;
    ~PendingFile();

    std::ostream& stream() { return m_stream; }

    /// The temporary file, for a writer that opens it by itself. It has the target's extension.
    std::filesystem::path const& temporary() const { return m_temporary; }

    /// Puts the file under its name, and returns when it is on the disk: after a loss of power the older file
    /// is there or the new one, whole. Throws Failure when not all that was written could be stored.
    void commit();

private:
    std::filesystem::path m_target;
    std::filesystem::path m_temporary;
    RemovedOnInterruption m_removed;
    std::ofstream m_stream;
};

} // namespace zel
