// Laying out and writing archive files.

#include "archive/archive_writer.h"

#include "command_line/printable_text.h"

#include <limits>
#include <numeric>
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

std::uint32_t checksum(std::string_view bytes, std::uint32_t before = 0) {
    return static_cast<std::uint32_t>(Zel::crc32(bytes.data(), bytes.size(), before));
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
    add(std::move(name), size, [content = std::move(content)](Take const& take) { take(content); });
}

std::uint64_t ArchiveWriter::archiveSize() const {
    std::uint64_t const empty = archiveHead({}).size();
    std::uint64_t const recordWithoutName = archiveHead({{}}).size() - empty;
    return std::accumulate(m_entries.begin(), m_entries.end(), empty,
                           [recordWithoutName](std::uint64_t sum, Entry const& entry) {
                               return sum + recordWithoutName + entry.name.size() + entry.size;
                           });
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

/// Writes an entry's bytes and notes their checksum.
void ArchiveWriter::writeContent(Entry const& entry, ArchiveRecord& record, std::ostream& stream,
                                 Written const& written) {
    auto const requireSize = [&](bool isRight) {
        if (!isRight)
            throw std::runtime_error(printableName(entry.name) +
                                     " has changed its size since it was counted");
    };
    std::uint64_t size = 0;
    std::string bytes; // of one piece after the other
    entry.load([&](std::string_view piece) {
        size += piece.size();
        requireSize(size <= entry.size);
        record.crc = checksum(piece, record.crc);
        bytes = piece;
        scramble(bytes);
        stream << bytes;
        if (written)
            written(piece.size());
    });
    requireSize(size == entry.size);
}

void ArchiveWriter::write(std::ostream& stream, Written const& written) const {
    std::vector<ArchiveRecord> records = layOut();
    auto const start = stream.tellp();
    stream << archiveHead(records); // holds the place until the checksums are known
    for (std::size_t i = 0; i < records.size() && stream; ++i)
        writeContent(m_entries[i], records[i], stream, written);
    stream.seekp(start);
    stream << archiveHead(records);
    stream.seekp(0, std::ios::end);
}

} // namespace zel
