// Where the entries of an archive go below a directory.
#pragma once

#include "host/output_tree.h"

#include <filesystem>
#include <map>
#include <memory>
#include <string>

namespace zel {

/// Gives each entry its file, and refuses those that belong nowhere.
class Unpacking {
public:
    /// Makes the directory when it is missing. Throws Failure or std::filesystem::filesystem_error.
    explicit Unpacking(std::filesystem::path directory);

private:
    friend class UnpackedFile;

    std::filesystem::path place(std::string const& entryName);

    std::filesystem::path m_directory;
    OutputTree m_tree;
    unsigned long m_files = 0;                       ///< temporary names tried so far
    std::map<std::string, std::string> m_placed;     ///< the entry placed under each name in lower case
    std::map<FileIdentity, std::string> m_extracted; ///< the entry that each file was extracted from
};

/// The file of an entry, which appears under its name when it is complete. Unless it is committed, whatever
/// has that name stays untouched. One at a time.
class UnpackedFile {
public:
    /// Makes the directories that lead to the file. Throws Failure, a finding, when the name leads out of the
    /// directory, a link or a file stands where it needs a directory, or an earlier entry has the same file
    /// on this host, or on those that do not tell case.
    UnpackedFile(Unpacking& unpacking, std::string entryName);
    UnpackedFile(UnpackedFile const&) = delete;
    UnpackedFile& operator=(UnpackedFile const&) = delete;
    ~UnpackedFile();

    /// Both throw Failure when the disk refuses the bytes.
    void write(std::string const& bytes);
    void commit();

private:
    struct Closer {
        void operator()(std::FILE* stream) const { std::fclose(stream); }
    };

    [[noreturn]] void throwCannotWrite(std::error_code reason) const;

    Unpacking& m_unpacking;
    std::string m_entryName;
    std::filesystem::path m_target; ///< from the root
    std::filesystem::path
        m_temporary; ///< a short name of its own: the target's may be as long as the host allows
    std::unique_ptr<std::FILE, Closer> m_stream;
};

} // namespace zel
