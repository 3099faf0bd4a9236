// Reading a table: checked as a whole, then record by record, then brought into order.

#include "archive/table.h"

#include "archive/scramble.h"
#include "core/crc32_register.h"

#include <algorithm>
#include <utility>
#include <zel/exception.h>

namespace Zel {
namespace {

constexpr std::uint32_t kVersion = 44;

/// Tables are worked on in pieces of so many bytes, each of which stays in the processor's first cache.
constexpr std::size_t kPieceSize = 16384;

std::uint32_t readNumber(ReadBytes const& read) {
    unsigned char bytes[4];
    read(bytes, sizeof bytes);
    return littleEndian32(bytes);
}

/// Reads the records, unscrambles them and returns their checksum.
std::uint32_t readRecords(TableText& text, ReadBytes const& read) {
    Crc32Register crc;
    for (std::size_t at = 0; at < text.size(); at += kPieceSize) {
        std::size_t const count = std::min(kPieceSize, text.size() - at);
        read(text.at(at), count);
        unscramble(text.at(at), count);
        crc.update(text.at(at), count);
    }
    return crc.value();
}

/// The unscrambled records, checked against their checksum.
TableText readChecked(std::uint64_t fileSize, ReadBytes const& read, std::string const& archiveName) {
    std::uint32_t const version = readNumber(read);
    if (version != kVersion)
        throw Exception_ArchiveVersionInvalid(archiveName.c_str(), static_cast<std::int32_t>(version),
                                              kVersion);
    std::uint32_t const length = readNumber(read);
    if (length == 0)
        throw Exception_ArchiveCorrupt(archiveName.c_str());
    if (length > fileSize - 8)
        throw FileException_ReadError(archiveName.c_str());

    TableText text(length);
    std::uint32_t const crc = readRecords(text, read);
    unsigned char storedCrc[4];
    read(storedCrc, sizeof storedCrc);
    unscramble(storedCrc, sizeof storedCrc);
    if (crc != littleEndian32(storedCrc))
        throw Exception_ArchiveCorrupt(archiveName.c_str());
    return text;
}

/// Where each record starts. Throws when they do not fill the table, or an entry is empty.
std::vector<std::uint32_t> findRecords(TableText const& text, std::string const& archiveName) {
    std::vector<std::uint32_t> records;
    for (std::size_t at = 0; at < text.size();) {
        unsigned char const* const record = text.at(at);
        std::size_t const left = text.size() - at;
        if (left < kRecordNumbers || littleEndian32(record) > left - kRecordNumbers ||
            decodeRecord(record).size == 0)
            throw Exception_ArchiveCorrupt(archiveName.c_str());
        records.push_back(static_cast<std::uint32_t>(at));
        at += recordSize(record);
    }
    return records;
}

/// Brings records into the order of their names. Of those with one name, the first stays.
void sortRecords(std::vector<std::uint32_t>& records, TableText const& text) {
    auto const isLess = [&text](std::uint32_t a, std::uint32_t b) {
        return recordName(text.at(a)) < recordName(text.at(b));
    };
    auto const isNotLess = [&isLess](std::uint32_t a, std::uint32_t b) {
        return !isLess(a, b);
    };
    if (std::adjacent_find(records.begin(), records.end(), isNotLess) == records.end())
        return; // as most tables are
    std::stable_sort(records.begin(), records.end(), isLess);
    records.erase(std::unique(records.begin(), records.end(), isNotLess), records.end());
}

} // namespace

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

EntryTable::EntryTable(std::uint64_t fileSize, ReadBytes const& read, std::string const& archiveName)
    : m_text(readChecked(fileSize, read, archiveName)), m_records(findRecords(m_text, archiveName)) {
    sortRecords(m_records, m_text);
    index();
}

void EntryTable::index() {
    m_accessed.assign(size(), 0);
    m_index = NameIndex(size(), [this](std::size_t position) { return nameAt(position); });
}

void EntryTable::remove(std::function<bool(std::string_view name)> const& isChosen) {
    std::vector<std::uint32_t> kept;
    std::size_t bytes = 0;
    for (std::uint32_t const record : m_records) {
        if (isChosen(recordName(m_text.at(record))))
            continue;
        kept.push_back(record);
        bytes += recordSize(m_text.at(record));
    }
    if (kept.size() == m_records.size())
        return;
    TableText text(bytes); // without the bytes of those that go
    unsigned char* to = text.at(0);
    for (std::uint32_t& record : kept) {
        unsigned char const* const from = m_text.at(record);
        record = static_cast<std::uint32_t>(to - text.at(0));
        to = std::copy_n(from, recordSize(from), to);
    }
    m_text = std::move(text);
    m_records = std::move(kept);
    index();
}

} // namespace Zel
