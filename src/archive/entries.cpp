// Keeping entries in order.

#include "archive/entries.h"

#include "archive/table.h"

#include <algorithm>
#include <limits>
#include <new>
#include <numeric>
#include <utility>

namespace Zel {

TableText::TableText(std::size_t size)
    : m_bytes(std::make_unique_for_overwrite<unsigned char[]>(size)), m_size(size) {}

TableText::TableText(TableText const& other) : TableText(other.m_size) {
    std::copy_n(other.m_bytes.get(), m_size, m_bytes.get());
}

TableText& TableText::operator=(TableText other) noexcept {
    std::swap(m_bytes, other.m_bytes);
    std::swap(m_size, other.m_size);
    return *this;
}

ArchiveEntries::ArchiveEntries(std::string keyPrefix, TableText table, std::vector<std::uint32_t> records)
    : m_keyPrefix(std::move(keyPrefix)),
      m_table(std::move(table)),
      m_records(std::move(records)),
      m_accessed(m_records.size()) {
    arrange();
}

/// Brings the records into the order of their names, and indexes these.
void ArchiveEntries::arrange() {
    std::size_t inOrder = 1;
    while (inOrder < size() && nameAt(inOrder - 1) < nameAt(inOrder))
        ++inOrder;
    if (inOrder < size()) {
        std::vector<std::size_t> order(size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        std::stable_sort(order.begin(), order.end(),
                         [this](std::size_t a, std::size_t b) { return nameAt(a) < nameAt(b); });
        auto const isSame = [this](std::size_t a, std::size_t b) {
            return nameAt(a) == nameAt(b);
        };
        order.erase(std::unique(order.begin(), order.end(), isSame), order.end());

        std::vector<std::uint32_t> records;
        std::vector<unsigned char> accessed;
        for (std::size_t const position : order) {
            records.push_back(m_records[position]);
            accessed.push_back(m_accessed[position]);
        }
        m_records = std::move(records);
        m_accessed = std::move(accessed);
    }
    m_index = NameIndex(size(), [this](std::size_t position) { return nameAt(position); });
}

void ArchiveEntries::merge(ArchiveEntries others) {
    if (size() == 0) {
        *this = std::move(others);
        return;
    }
    // The prefixes may differ: whole keys become the names.
    std::size_t const tableSizes = tableSize() + others.tableSize();
    if (tableSizes > std::numeric_limits<std::uint32_t>::max())
        throw std::bad_alloc();
    ArchiveEntries all;
    all.m_table = TableText(tableSizes);
    others.copyRecords(all, copyRecords(all, 0));
    all.arrange();
    *this = std::move(all);
}

/// Writes the records, named by their keys, to a place in the table of `all`, and enters them there. Returns
/// where they end.
std::size_t ArchiveEntries::copyRecords(ArchiveEntries& all, std::size_t to) const {
    for (std::size_t position = 0; position < size(); ++position) {
        std::string const key = keyAt(position);
        all.m_records.push_back(static_cast<std::uint32_t>(to));
        all.m_accessed.push_back(m_accessed[position]);
        writeRecord(all.m_table.at(to), key, infoAt(position));
        to += recordSize(key.size());
    }
    return to;
}

/// The bytes of all records, named by their keys.
std::size_t ArchiveEntries::tableSize() const {
    std::size_t bytes = 0;
    for (std::size_t position = 0; position < size(); ++position)
        bytes += recordSize(m_keyPrefix.size() + nameAt(position).size());
    return bytes;
}

std::optional<std::size_t> ArchiveEntries::find(std::string_view key) const {
    if (!key.starts_with(m_keyPrefix))
        return std::nullopt;
    return m_index.find(key.substr(m_keyPrefix.size()),
                        [this](std::size_t position) { return nameAt(position); });
}

Archive::FileInfo ArchiveEntries::infoAt(std::size_t position) const {
    Archive::FileInfo info = recordInfo(m_table.at(m_records[position]));
    info.accessed = m_accessed[position];
    return info;
}

Archive::FileInfo ArchiveEntries::access(std::size_t position) {
    m_accessed[position] = 1;
    return infoAt(position);
}

std::string_view ArchiveEntries::nameAt(std::size_t position) const {
    return recordName(m_table.at(m_records[position]));
}

} // namespace Zel
