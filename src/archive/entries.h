// The entries of an archive: an ordered map from keys, kept flat. It stands on the table as it was read,
// which copies share; in memory, an entry takes little more than its record there.
#pragma once

#include "core/name_index.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>
#include <zel/archive.h>

namespace Zel {

/// The records of an archive's table, one behind the other: see table.h.
using TableText = std::shared_ptr<unsigned char const[]>;

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
    void markAccessed(std::size_t position) { m_accessed[position] = true; }

private:
    std::string_view nameAt(std::size_t position) const;
    void arrange();
    std::size_t tableSize() const;
    unsigned char* copyRecords(unsigned char* table, unsigned char* to, ArchiveEntries& all) const;

    std::string m_keyPrefix;
    TableText m_table;
    std::vector<std::uint32_t> m_records; // in the order of their keys, as most tables have them
    std::vector<bool> m_accessed;
    NameIndex m_index;
};

} // namespace Zel
