// An archive opened by its host path, for commands that look at every entry.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>
#include <zel/archive.h>
#include <zel/file.h>

namespace zel {

struct ArchiveEntry {
    std::string name; ///< as the archive stores it
    Zel::Archive::FileInfo info;
};

class MountedArchive {
public:
    /// Takes the path as the host writes it. Throws the library's exceptions, which name it likewise, and
    /// Failure when memory runs out.
    explicit MountedArchive(std::string const& hostPath);

    /// All entries in order of their keys, those included that File cannot find by name.
    std::vector<ArchiveEntry> const& entries() const { return m_entries; }

    /// The entry stored under this name or, when there is none, the one that File would find by it.
    std::optional<ArchiveEntry> find(std::string const& name) const;

    /// Reads the entry. Throws FileException_ReadError or FileException_FileCorrupted, naming it (printably),
    /// or Failure when memory runs out.
    void check(ArchiveEntry const& entry);

    /// Hands the entry's bytes on in pieces. Throws as `check` does: that the checksum is wrong comes out
    /// only when all pieces have been handed on.
    void readInPieces(ArchiveEntry const& entry, std::function<void(std::string const& piece)> const& take);

private:
    std::string m_name;
    Zel::File m_file; // opened first: no entry of the archive can stand in for the archive file
    Zel::Archive m_archive;
    std::string m_keyPrefix;
    std::vector<ArchiveEntry> m_entries;
};

/// The sum of the entries' sizes in bytes.
std::uint64_t totalSize(std::vector<ArchiveEntry> const& entries);

} // namespace zel
