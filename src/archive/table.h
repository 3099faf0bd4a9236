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
#pragma once

#include "archive/entries.h"
#include "core/little_endian.h"

#include <string>

namespace Zel {

class BinaryFile;

/// Reads the table from the start of `file` and returns its entries under `keyPrefix` + name; the first
/// record of a name counts. `archiveName` is what exceptions name: Exception_ArchiveVersionInvalid,
/// Exception_ArchiveCorrupt, and those of reading `file`.
ArchiveEntries readTable(BinaryFile& file, std::string const& archiveName, std::string const& keyPrefix);

/// The bytes of a record whose name is that long.
constexpr std::size_t recordSize(std::size_t nameLength) { return 4 + nameLength + 12; }

// Of a record that is there as a whole:

inline std::string_view recordName(unsigned char const* record) {
    return {reinterpret_cast<char const*>(record + 4), littleEndian32(record)};
}

inline Archive::FileInfo recordInfo(unsigned char const* record) {
    unsigned char const* const numbers = record + 4 + littleEndian32(record);
    Archive::FileInfo info;
    info.size = littleEndian32(numbers);
    info.offset = littleEndian32(numbers + 4);
    info.crc = littleEndian32(numbers + 8);
    return info;
}

/// Writes recordSize(name.size()) bytes.
void writeRecord(unsigned char* record, std::string_view name, Archive::FileInfo const& info);

} // namespace Zel
