// Laying out and writing archive files.

#include "archive_writer.h"

#include <limits>
#include <ostream>
#include <stdexcept>
#include <utility>
#include <zel/archive.h>
#include <zel/crc32.h>

namespace zel {
namespace {

constexpr std::uint32_t kVersion = 44;

void appendNumber(std::string& bytes, std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(static_cast<unsigned char>(value >> shift));
}

void scramble(std::string& bytes) { Zel::Archive::decrypt(bytes.data(), static_cast<int>(bytes.size())); }

std::uint32_t checksum(std::string const& bytes) {
    return static_cast<std::uint32_t>(Zel::crc32(bytes.data(), bytes.size()));
}

} // namespace

std::string archiveHead(std::vector<ArchiveRecord> const& records) {
    std::string table;
    for (ArchiveRecord const& record : records) {
        appendNumber(table, static_cast<std::uint32_t>(record.name.size()));
        table += record.name;
        appendNumber(table, record.size);
        appendNumber(table, record.offset);
        appendNumber(table, record.crc);
    }
    std::string crc;
    appendNumber(crc, checksum(table));
    scramble(table);
    scramble(crc);

    std::string head;
    appendNumber(head, kVersion);
    appendNumber(head, static_cast<std::uint32_t>(table.size()));
    return head + table + crc;
}

void ArchiveWriter::add(std::string name, std::uint64_t size, Load load) {
    m_entries.push_back({std::move(name), size, std::move(load)});
}

void ArchiveWriter::add(std::string name, std::string content) {
    std::uint64_t const size = content.size();
    add(std::move(name), size, [content = std::move(content)] { return content; });
}

std::uint64_t ArchiveWriter::archiveSize() const {
    std::uint64_t size = archiveHead({}).size();
    for (Entry const& entry : m_entries)
        size += archiveHead({{entry.name}}).size() - archiveHead({}).size() + entry.size;
    return size;
}

/// The records with their places in the file; the checksums are not known yet.
std::vector<ArchiveRecord> ArchiveWriter::layOut() const {
    if (archiveSize() > static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max()))
        throw std::length_error("the archive would pass 2 GiB");
    std::vector<ArchiveRecord> records;
    for (Entry const& entry : m_entries)
        records.push_back({entry.name, static_cast<std::uint32_t>(entry.size)});
    auto offset = static_cast<std::uint32_t>(archiveHead(records).size());
    for (ArchiveRecord& record : records) {
        record.offset = offset;
        offset += record.size;
    }
    return records;
}

void ArchiveWriter::write(std::ostream& stream, std::function<void(std::uint64_t)> const& written) const {
    std::vector<ArchiveRecord> records = layOut();
    auto const start = stream.tellp();
    stream << archiveHead(records); // holds the place until the checksums are known
    for (std::size_t i = 0; i < records.size() && stream; ++i) {
        std::string content = m_entries[i].load();
        if (content.size() != records[i].size)
            throw std::runtime_error(records[i].name + " has changed since it was counted");
        records[i].crc = checksum(content);
        scramble(content);
        stream << content;
        if (written)
            written(content.size());
    }
    stream.seekp(start);
    stream << archiveHead(records);
    stream.seekp(0, std::ios::end);
}

} // namespace zel
