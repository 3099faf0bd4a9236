// The entries of an archive, which may have been loaded from several files: an ordered map from keys, on the
// tables as they were read.
#pragma once

#include "archive/table.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Zel {

class ArchiveEntries {
public:
    /// Where an entry stands.
    struct Place {
        std::size_t table;
        std::size_t position;
    };

    /// Adds the entries of a table, whose keys are `keyPrefix` + their names. Those whose keys are here
    /// already are left out. Changes nothing when memory runs out.
    void add(std::string keyPrefix, EntryTable table);

    /// The entry with that key.
    std::optional<Place> find(std::string_view key) const;

    std::string keyAt(Place place) const;
    Record recordAt(Place place) const { return tableAt(place).recordAt(place.position); }
    bool isAccessed(Place place) const { return tableAt(place).isAccessed(place.position); }
    void markAccessed(Place place) { m_parts[place.table].table.markAccessed(place.position); }

    /// Goes through the entries in ascending order of their keys.
    class Walk {
    public:
        /// From the first.
        explicit Walk(ArchiveEntries const& entries);
        /// From the one that follows an entry.
        Walk(ArchiveEntries const& entries, Place previous);

        /// The next entry and its key; nothing at the end.
        std::optional<Place> next(std::string& key);

    private:
        ArchiveEntries const& m_entries;
        std::vector<std::size_t> m_positions; // in each table, that of the first entry not yet passed
    };

private:
    struct Part {
        std::string keyPrefix;
        EntryTable table;
    };

    EntryTable const& tableAt(Place place) const { return m_parts[place.table].table; }

    std::vector<Part> m_parts; // no key is in two of them
};

} // namespace Zel
