// Many tables as one ordered map.

#include "archive/entries.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Zel {

void ArchiveEntries::add(std::string keyPrefix, EntryTable table) {
    if (!m_parts.empty())
        table.remove([&](std::string_view name) { return find(keyPrefix + std::string(name)).has_value(); });
    if (table.size() == 0)
        return;
    m_parts.push_back({std::move(keyPrefix), std::move(table)});
    try {
        if (m_parts.size() > 1)
            addRun();
    } catch (...) { // out of memory
        m_parts.pop_back();
        throw;
    }
}

/// Brings the entries of the last table into the order of all.
void ArchiveEntries::addRun() {
    if (m_runs.empty())
        m_runs.push_back(runOf(0));
    Run run = runOf(m_parts.size() - 1);
    std::size_t kept = m_runs.size();
    for (; kept > 0 && m_runs[kept - 1].size() < 2 * run.size(); --kept) {
        Run joined;
        joined.reserve(m_runs[kept - 1].size() + run.size());
        std::merge(m_runs[kept - 1].begin(), m_runs[kept - 1].end(), run.begin(), run.end(),
                   std::back_inserter(joined), [this](Place a, Place b) { return isLess(a, b); });
        run = std::move(joined);
    }
    m_runs.reserve(kept + 1); // from here on, nothing throws
    m_runs.resize(kept);
    m_runs.push_back(std::move(run));
}

ArchiveEntries::Run ArchiveEntries::runOf(std::size_t part) const {
    Run run(m_parts[part].table.size());
    for (std::size_t i = 0; i < run.size(); ++i)
        run[i] = {static_cast<std::uint32_t>(part), static_cast<std::uint32_t>(i)};
    return run;
}

std::size_t ArchiveEntries::sizeOf(std::size_t run) const {
    return m_parts.size() == 1 ? m_parts[0].table.size() : m_runs[run].size();
}

ArchiveEntries::Place ArchiveEntries::placeAt(std::size_t run, std::size_t index) const {
    return m_parts.size() == 1 ? Place{0, static_cast<std::uint32_t>(index)} : m_runs[run][index];
}

/// How the key of an entry compares with another: below 0 when it is less, 0 when they are equal.
int ArchiveEntries::compare(Place place, std::string_view key) const {
    auto const& [keyPrefix, table] = m_parts[place.table];
    int const prefixes = keyPrefix.compare(key.substr(0, keyPrefix.size()));
    return prefixes != 0 ? prefixes : table.nameAt(place.position).compare(key.substr(keyPrefix.size()));
}

bool ArchiveEntries::isLess(Place a, Place b) const {
    if (m_parts[a.table].keyPrefix == m_parts[b.table].keyPrefix) // as mostly
        return m_parts[a.table].table.nameAt(a.position) < m_parts[b.table].table.nameAt(b.position);
    return compare(a, keyAt(b)) < 0;
}

/// The first entry of a run whose key is not less.
std::size_t ArchiveEntries::firstFrom(std::size_t run, std::string_view key) const {
    std::size_t begin = 0;
    for (std::size_t end = sizeOf(run); begin < end;) {
        std::size_t const middle = begin + (end - begin) / 2;
        if (compare(placeAt(run, middle), key) < 0)
            begin = middle + 1;
        else
            end = middle;
    }
    return begin;
}

std::optional<ArchiveEntries::Place> ArchiveEntries::find(std::string_view key) const {
    if (m_parts.size() == 1) { // whose index takes one step
        auto const& [keyPrefix, table] = m_parts[0];
        auto const position =
            key.starts_with(keyPrefix) ? table.find(key.substr(keyPrefix.size())) : std::nullopt;
        return position ? std::optional(Place{0, static_cast<std::uint32_t>(*position)}) : std::nullopt;
    }
    for (std::size_t run = 0; run < m_runs.size(); ++run) {
        std::size_t const index = firstFrom(run, key);
        if (index < m_runs[run].size() && compare(m_runs[run][index], key) == 0)
            return m_runs[run][index];
    }
    return std::nullopt;
}

std::string ArchiveEntries::keyAt(Place place) const {
    auto const& [keyPrefix, table] = m_parts[place.table];
    return keyPrefix + std::string(table.nameAt(place.position));
}

ArchiveEntries::Walk::Walk(ArchiveEntries const& entries) : m_entries(entries), m_passed(entries.runs()) {}

ArchiveEntries::Walk::Walk(ArchiveEntries const& entries, Place previous) : Walk(entries) {
    if (entries.m_parts.size() == 1) {
        m_passed[0] = previous.position + 1;
        return;
    }
    std::string const key = entries.keyAt(previous);
    for (std::size_t run = 0; run < m_passed.size(); ++run) {
        std::size_t const index = entries.firstFrom(run, key);
        bool const isPrevious =
            index < entries.sizeOf(run) && entries.compare(entries.placeAt(run, index), key) == 0;
        m_passed[run] = index + (isPrevious ? 1 : 0);
    }
}

std::optional<ArchiveEntries::Place> ArchiveEntries::Walk::next(std::string& key) {
    std::optional<Place> least;
    std::size_t from = 0;
    for (std::size_t run = 0; run < m_passed.size(); ++run) {
        if (m_passed[run] == m_entries.sizeOf(run))
            continue;
        Place const place = m_entries.placeAt(run, m_passed[run]);
        if (!least || m_entries.isLess(place, *least)) {
            least = place;
            from = run;
        }
    }
    if (least) {
        key = m_entries.keyAt(*least);
        ++m_passed[from];
    }
    return least;
}

} // namespace Zel
