// A file that appears under its name only when it is complete.
#pragma once

#include <filesystem>
#include <fstream>

namespace zel {

/// Writes to a temporary file beside the target. Unless it is committed, the temporary file goes away with
/// this object and whatever stood under the target's name stays untouched.
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

    /// Puts the file under its name. Throws Failure when not all that was written could be stored.
    void commit();

private:
    std::filesystem::path m_target;
    std::filesystem::path m_temporary;
    std::ofstream m_stream;
};

} // namespace zel
