// Writes archive files. The layout is that of src/archive/table.h: the table first, then the entries' bytes,
// in the order in which they were added.
#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace zel {

/// One record of an archive's table.
struct ArchiveRecord {
    std::string name;
    std::uint32_t size = 0;
    std::uint32_t offset = 0;
    std::uint32_t crc = 0;
};

/// The head of an archive file: version, length and table, scrambled and checksummed. Any records will do,
/// wrong ones included.
std::string archiveHead(std::vector<ArchiveRecord> const& records);

class ArchiveWriter {
public:
    using Take = std::function<void(std::string_view piece)>;
    using Written = std::function<void(std::uint64_t bytes)>;
    using Load = std::function<void(Take const& take)>;

    /// Adds an entry of `size` bytes, which `load` hands on piece by piece when they are written. Names are
    /// stored as given.
    void add(std::string name, std::uint64_t size, Load load);
    void add(std::string name, std::string content);

    /// The length in bytes of the archive that `write` would make now.
    std::uint64_t archiveSize() const;

    /// Writes the archive at the stream's present position. `written` is told the bytes of each piece when it
    /// has been handed to the stream. Stops behind the entry in which the stream fails: the caller checks it.
    /// Throws std::runtime_error when an entry does not have the size it was added with, std::length_error
    /// when the archive would pass 2^31 - 1 bytes, and what `load` throws.
    void write(std::ostream& stream, Written const& written = {}) const;

private:
    struct Entry {
        std::string name;
        std::uint64_t size;
        Load load;
    };

    std::vector<ArchiveRecord> layOut() const;
    static void writeContent(Entry const& entry, ArchiveRecord& record, std::ostream& stream,
                             Written const& written);

    std::vector<Entry> m_entries;
};

} // namespace zel
