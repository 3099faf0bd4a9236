// The entries of an archive: an ordered map from keys, kept flat. It stands on the table as it was read; in
// memory, an entry takes little more than its record there.
#pragma once

#include "core/name_index.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>
#include <zel/archive.h>

namespace Zel {

/// The records of an archive's table, one behind the other (see table.h). A copy has bytes of its own.
class TableText {
public:
    TableText() = default;
    /// Takes memory for the bytes, which are yet to be written.
    explicit TableText(std::size_t size);
    TableText(TableText const& other);
    TableText(TableText&&) = default;
    TableText& operator=(TableText other) noexcept;
    ~TableText() = default;

    std::size_t size() const { return m_size; }
    unsigned char* at(std::size_t offset) { return m_bytes.get() + offset; }
    unsigned char const* at(std::size_t offset) const { return m_bytes.get() + offset; }

private:
    std::unique_ptr<unsigned char[]> m_bytes;
    std::size_t m_size = 0;
};

class ArchiveEntries {
public:
    /// No entries.
    ArchiveEntries() = default;

    /// Entries whose keys are `keyPrefix` + the names of the records that start at the given places. Of those
    /// with one name, the first stays.
    ArchiveEntries(std::string keyPrefix, TableText table, std::vector<std::uint32_t> records);

    /// Adds those of `others` whose keys are not here. Changes nothing when memory runs out, which more than
    /// 4 GiB of records count as.
    void merge(ArchiveEntries others);

    // Entries are known by their positions in the order of their keys.

    std::size_t size() const { return m_records.size(); }

    /// The entry with that key.
    std::optional<std::size_t> find(std::string_view key) const;

    std::string keyAt(std::size_t position) const { return m_keyPrefix + std::string(nameAt(position)); }
    Archive::FileInfo infoAt(std::size_t position) const;

    /// The same for somebody who gets the entry, which counts as accessed from then on. Threads that open
    /// files may all be here: each entry has a byte of its own, which all of them write alike.
    Archive::FileInfo access(std::size_t position);

private:
    std::string_view nameAt(std::size_t position) const;
    void arrange();
    std::size_t tableSize() const;
    std::size_t copyRecords(ArchiveEntries& all, std::size_t to) const;

    std::string m_keyPrefix;
    TableText m_table;
    std::vector<std::uint32_t> m_records;  // in the order of their keys, as most tables have them
    std::vector<unsigned char> m_accessed; // 1 for those that were; no bits, which would share a word
    NameIndex m_index;
};

} // namespace Zel
