// Archives: packed data files that are read as if they lay in the data directory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>
#include <zel/api.h>
#include <zel/exception.h>

namespace Zel {

class ArchiveEntries;
class FileContent;

/// The table of one archive file, and the registry of all archives alive.
///
/// An entry's key is the data directory as it was when the archive was loaded, in lower case, followed by the
/// name stored in the archive. File finds only keys in lower case with backslashes; the substring searches
/// find any. The archive file itself is opened anew by every File that reads an entry.
class ZEL_API Archive {
public:
    /// What the table tells of one entry.
    struct FileInfo {
        std::uint32_t size = 0;     ///< length in bytes
        std::uint32_t offset = 0;   ///< position in the archive file
        std::uint32_t crc = 0;      ///< CRC-32 of the bytes after unscrambling
        std::uint32_t accessed = 0; ///< 1 once a lookup has found the entry; nothing sets it back
    };

    /// Empty, without a name, and registered at once.
    Archive();

    /// Loads an archive file as setFileName does, then registers it. When loading throws, nothing is
    /// registered.
    Archive(std::string const& fileName);

    /// A copy is not registered. An assignment leaves the registration of both as it is.
    Archive(Archive const& other);
    Archive& operator=(Archive const& other);

    /// Takes this archive out of the registry.
    virtual ~Archive();

    /// Adds the entries of an archive file to those already held. Meant: the earlier entry stays where both
    /// have the same key, as the first does where a table names one twice. The file is opened as File opens
    /// one, so it may itself lie in an archive registered earlier.
    /// Throws what opening and reading a File throws (FileException_ReadError for a file shorter than its
    /// header tells), Exception_ArchiveVersionInvalid, and Exception_ArchiveCorrupt when the table's checksum
    /// differs, its records do not fit into it, it is empty or it holds an entry of size 0. After a failure
    /// the new name is kept, and so are the old entries.
    void setFileName(std::string const& fileName);

    /// The current directory at the time of loading, joined with the name: where File reads the entries.
    std::string const& getFullPath() const;

    /// Whether there is an entry of exactly this key. It does not count as an access.
    bool hasFile(std::string const& key) const;

    /// Finds the entry of exactly this key and marks it accessed; `info` stays as it is when there is none.
    bool findFile(std::string const& key, FileInfo& info) const;

    /// Finds the first entry, in ascending order of the keys, whose key contains `part`, and marks it
    /// accessed.
    bool findFirstSubstring(std::string part, std::string& key, FileInfo& info) const;

    /// Goes on behind the entry whose key is `previous`, which must be a key of this archive: any other ends
    /// the process. `key` may be the same object as `previous`.
    bool findNextSubstring(std::string part, std::string previous, std::string& key, FileInfo& info) const;

    /// Writes the entries not yet accessed, and their total size, to the verbose log.
    void dumpUnaccessedFiles() const;

    /// The same for the slots below getArchiveCount().
    static void dumpAllUnaccessedFiles();

    /// The number of registered archives that have a file name. Meant: this is also the number of slots,
    /// named or not, that File searches, so an unnamed archive in front hides the last named one.
    static int getArchiveCount();

    /// The archive in a slot of the registry, named or not. A slot that does not exist ends the process.
    static Archive const* getArchive(int index);

    /// Scrambles or unscrambles bytes in place: the same operation does both. A length of 0 or below changes
    /// nothing.
    static void decrypt(void* data, int length);

    /// The registry, in order of registration. The archives are not owned by it.
    static std::vector<Archive*> sm_vecArchives;

private:
    friend class FileContent; // which opens the archive's file for each of its entries

    std::string m_fileName;
    std::string m_fullPath;
    // The same with the name as given in lower case, as it was when the table was read, and the directory in
    // front of it as it is: what the host is asked for.
    std::string m_openPath;
    // Lookups keep the accessed flags in the entries; they are no part of an archive's value.
    std::unique_ptr<ArchiveEntries> m_entries;
};

} // namespace Zel
