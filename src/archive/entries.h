// The entries of an archive, which may have been loaded from several files: an ordered map from keys, on the
// tables as they were read.
#pragma once

#include "archive/table.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Zel {

class ArchiveEntries {
public:
    /// Where an entry stands.
    struct Place {
        std::uint32_t table;
        std::uint32_t position;
    };

    /// Adds the entries of a table, whose keys are `keyPrefix` + their names. Those whose keys are here
    /// already are left out. Changes nothing when memory runs out.
    void add(std::string keyPrefix, EntryTable table);

    /// The entry with that key.
    std::optional<Place> find(std::string_view key) const;

    std::string keyAt(Place place) const;
    Record recordAt(Place place) const { return m_parts[place.table].table.recordAt(place.position); }
    bool isAccessed(Place place) const { return m_parts[place.table].table.isAccessed(place.position); }
    void markAccessed(Place place) { m_parts[place.table].table.markAccessed(place.position); }

    /// Goes through the entries in ascending order of their keys. They must not change meanwhile.
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
        std::vector<std::size_t> m_passed; // how many entries of each run
    };

private:
    struct Part {
        std::string keyPrefix;
        EntryTable table;
    };
    using Run = std::vector<Place>;

    // Of one table the order is its own, without a run.
    std::size_t runs() const { return m_parts.size() < 2 ? m_parts.size() : m_runs.size(); }
    std::size_t sizeOf(std::size_t run) const;
    Place placeAt(std::size_t run, std::size_t index) const;

    int compare(Place place, std::string_view key) const;
    bool isLess(Place a, Place b) const;
    std::size_t firstFrom(std::size_t run, std::string_view key) const;
    Run runOf(std::size_t part) const;
    void addRun();

    std::vector<Part> m_parts; // no key is in two of them
    // All entries of two tables and more, in the order of their keys: each run at least twice as long as the
    // next, so there are few, and adding tables one by one takes n log n steps.
    std::vector<Run> m_runs;
};

} // namespace Zel
