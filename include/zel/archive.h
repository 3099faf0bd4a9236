// Archives: packed data files that are read as if they lay in the data directory.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>
#include <zel/api.h>
#include <zel/exception.h>

namespace Zel {

class ArchiveEntries;
class FileContent;

/// The entries of an archive file, and the registry of archives (copies are not in it).
///
/// An entry's key is the data directory at the time of loading, in lower case, followed by the name stored in
/// the archive: with the data directory c:\data, the entry maps\a.bin has the key c:\data\maps\a.bin. File
/// asks for keys in lower case with backslashes, so it finds no entry stored under another spelling; the
/// substring searches do. Every File that reads an entry opens the archive file anew.
class ZEL_API Archive {
public:
    /// What the table tells of one entry.
    struct FileInfo {
        std::uint32_t size = 0;     ///< length in bytes
        std::uint32_t offset = 0;   ///< position in the archive file, in bytes
        std::uint32_t crc = 0;      ///< CRC-32 of the unscrambled bytes
        std::uint32_t accessed = 0; ///< 1 in what a successful find tells
    };

    /// Empty, without a name, and registered at once. Throws FileException_GetCurrentDirFailed when this is
    /// the first archive and the working directory cannot be told (see File::getCurrentDir).
    Archive();

    /// Loads an archive file as setFileName does, then registers this archive. When loading throws, nothing
    /// is registered.
    Archive(std::string const& fileName);

    /// A copy is not registered. An assignment leaves the registration of both as it is.
    Archive(Archive const& other);
    Archive& operator=(Archive const& other);

    /// Takes this archive out of the registry.
    virtual ~Archive();

    /// Loads an archive file: adds its entries to those already held. Meant: where a key is there already,
    /// the earlier entry stays, also when one table names it twice. Meant: File reads all entries from the
    /// file named last; so use one Archive for each file.
    ///
    /// Meant: a relative name is loaded from the data directory, as File opens it, but its entries are read
    /// from the current directory at that time: give a full path. The table of an archive file inside
    /// another archive loads, but its entries need the same file on the disk.
    ///
    /// Throws what opening and reading a File throws; a file shorter than its header tells is a
    /// FileException_ReadError. Throws Exception_ArchiveVersionInvalid, and Exception_ArchiveCorrupt when the
    /// table's checksum differs, its records do not fill it, it is empty, or it holds an entry of size 0.
    /// After a failure the old entries are kept, and the new name: the archive counts as named. They are read
    /// from the old file when the new one could not be opened, else from the new one.
    void setFileName(std::string const& fileName);

    /// The current directory at the time of loading, joined with the file name. File reads the entries there,
    /// with the name in lower case.
    std::string const& getFullPath() const;

    /// Whether there is an entry of exactly this key. The entry is not marked accessed.
    bool hasFile(std::string const& key) const;

    /// Finds the entry of exactly this key and marks it accessed. False when there is none; `info` stays as
    /// it is then.
    bool findFile(std::string const& key, FileInfo& info) const;

    /// Finds the first entry, in ascending order of the keys, whose key contains `part`, and marks it
    /// accessed. Case and separators count. False when there is none; `key` and `info` stay as they are then.
    bool findFirstSubstring(std::string part, std::string& key, FileInfo& info) const;

    /// The same for the entries behind the one whose key is `previous`. A `previous` that is no key of this
    /// archive ends the process. To visit all: findFirstSubstring(part, key, info), then, as long as it
    /// returns true, findNextSubstring(part, key, key, info).
    bool findNextSubstring(std::string part, std::string previous, std::string& key, FileInfo& info) const;

    /// Writes the keys of the entries not yet accessed, and the sum of their sizes (a signed number of 32
    /// bits), to the verbose log.
    void dumpUnaccessedFiles() const;

    /// The same for the archives in the slots below getArchiveCount().
    static void dumpAllUnaccessedFiles();

    /// The number of registered archives that have a file name. Meant: File searches so many slots from the
    /// first on, whether or not their archives have a name. With an unnamed archive in slot 0 and a named one
    /// in slot 1, the count is 1, and the named archive is not searched.
    static int getArchiveCount();

    /// The archive in a slot of the registry, from 0 in order of registration. A slot that does not exist
    /// ends the process.
    static Archive const* getArchive(int index);

    /// Scrambles or unscrambles `length` bytes in place: the same operation does both. A length of 0 or below
    /// changes nothing.
    static void decrypt(void* data, int length);

    /// The registry, in order of registration. It does not own the archives.
    static std::vector<Archive*> sm_vecArchives;

private:
    friend class FileContent; // which opens the archive's file for each of its entries

    std::string m_fileName;
    std::string m_fullPath;
    // What the host is asked for: the full path, in which the name is folded to lower case and the directory
    // is not.
    std::string m_openPath;
    // Lookups, although const, mark entries accessed here.
    std::unique_ptr<ArchiveEntries> m_entries;
};

} // namespace Zel
