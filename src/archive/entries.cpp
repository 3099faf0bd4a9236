// Many tables as one ordered map.

#include "archive/entries.h"

#include <utility>

namespace Zel {

void ArchiveEntries::add(std::string keyPrefix, EntryTable table) {
    if (!m_parts.empty())
        table.remove([&](std::string_view name) { return find(keyPrefix + std::string(name)).has_value(); });
    if (table.size() > 0)
        m_parts.push_back({std::move(keyPrefix), std::move(table)});
}

std::optional<ArchiveEntries::Place> ArchiveEntries::find(std::string_view key) const {
    for (std::size_t i = 0; i < m_parts.size(); ++i) {
        auto const& [keyPrefix, table] = m_parts[i];
        if (!key.starts_with(keyPrefix))
            continue;
        if (auto const position = table.find(key.substr(keyPrefix.size())))
            return Place{i, *position};
    }
    return std::nullopt;
}

std::string ArchiveEntries::keyAt(Place place) const {
    auto const& [keyPrefix, table] = m_parts[place.table];
    return keyPrefix + std::string(table.nameAt(place.position));
}

ArchiveEntries::Walk::Walk(ArchiveEntries const& entries)
    : m_entries(entries), m_positions(entries.m_parts.size()) {}

ArchiveEntries::Walk::Walk(ArchiveEntries const& entries, Place previous) : Walk(entries) {
    std::string const key = entries.keyAt(previous);
    for (std::size_t i = 0; i < m_positions.size(); ++i) {
        // The first whose key is greater, by bisection.
        std::size_t begin = i == previous.table ? previous.position + 1 : 0;
        std::size_t end = i == previous.table ? begin : entries.m_parts[i].table.size();
        while (begin < end) {
            std::size_t const middle = begin + (end - begin) / 2;
            if (entries.keyAt({i, middle}) > key)
                end = middle;
            else
                begin = middle + 1;
        }
        m_positions[i] = begin;
    }
}

std::optional<ArchiveEntries::Place> ArchiveEntries::Walk::next(std::string& key) {
    std::optional<Place> least;
    for (std::size_t i = 0; i < m_positions.size(); ++i) {
        Place const place{i, m_positions[i]};
        if (place.position == m_entries.m_parts[i].table.size())
            continue;
        std::string candidate = m_entries.keyAt(place);
        if (!least || candidate < key) {
            least = place;
            key = std::move(candidate);
        }
    }
    if (least)
        ++m_positions[least->table];
    return least;
}

} // namespace Zel
