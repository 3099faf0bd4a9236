// The table of entries at the head of an archive file. All numbers have 32 bits, the low byte first.
//
//   offset  size  field                                            scrambled
//   0       4     version, 44                                      no
//   4       4     T, the length of the table                       no
//   8       T     the records, back to back                        yes
//   8 + T   4     CRC-32 of the unscrambled table                  yes
//
//   record  L (4), name (L bytes), size (4), offset (4), CRC-32 of the entry's unscrambled bytes (4)
//
// An entry's bytes lie scrambled at its offset, counted from the start of the file.
//
// In memory, the table stays as it was read: an entry takes little more than its record.
#pragma once

#include "core/little_endian.h"
#include "core/name_index.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Zel {

/// What the table tells of one entry.
struct Record {
    std::string_view name; ///< within the table
    std::uint32_t size;
    std::uint32_t offset;
    std::uint32_t crc;
};

/// The bytes of a record beside its name: four numbers.
constexpr std::size_t kRecordNumbers = 16;

// Of a record that is there as a whole:

inline std::size_t recordSize(unsigned char const* record) { return kRecordNumbers + littleEndian32(record); }

inline std::string_view recordName(unsigned char const* record) {
    return {reinterpret_cast<char const*>(record + 4), littleEndian32(record)};
}

inline Record decodeRecord(unsigned char const* record) {
    std::string_view const name = recordName(record);
    unsigned char const* const numbers = record + 4 + name.size();
    return {name, littleEndian32(numbers), littleEndian32(numbers + 4), littleEndian32(numbers + 8)};
}

/// The records of a table, unscrambled, back to back. A copy has bytes of its own.
class TableText {
public:
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
    std::size_t m_size;
};

/// Hands out the next bytes of an archive file, from its start. Throws when it cannot.
using ReadBytes = std::function<void(void* bytes, std::size_t count)>;

/// The entries of one table, known by their positions in the order of their names.
class EntryTable {
public:
    /// Reads the table of an archive file of `fileSize` bytes. Of records with one name, the first counts.
    ///
    /// Exceptions name `archiveName`: Exception_ArchiveVersionInvalid for another version;
    /// FileException_ReadError for a table longer than the file, before memory is taken for it;
    /// Exception_ArchiveCorrupt when the checksum differs, the records do not fill the table, it is empty, or
    /// it holds an entry of size 0.
    EntryTable(std::uint64_t fileSize, ReadBytes const& read, std::string const& archiveName);

    std::size_t size() const { return m_records.size(); }

    Record recordAt(std::size_t position) const { return decodeRecord(m_text.at(m_records[position])); }
    std::string_view nameAt(std::size_t position) const { return recordName(m_text.at(m_records[position])); }

    /// The entry of that name.
    std::optional<std::size_t> find(std::string_view name) const {
        return m_index.find(name, [this](std::size_t position) { return nameAt(position); });
    }

    /// Takes out the entries whose names are chosen.
    void remove(std::function<bool(std::string_view name)> const& isChosen);

    /// Whether a caller got the entry. Threads that open files may all mark one: each entry has a byte of its
    /// own, which all of them write alike.
    bool isAccessed(std::size_t position) const { return m_accessed[position] != 0; }
    void markAccessed(std::size_t position) { m_accessed[position] = 1; }

private:
    void index();

    TableText m_text;
    std::vector<std::uint32_t> m_records;  // where each starts, in the order of their names
    std::vector<unsigned char> m_accessed; // 1 for those that were; no bits, which would share a word
    NameIndex m_index;
};

} // namespace Zel
