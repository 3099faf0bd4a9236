// Reading the table of an archive file: checked as a whole, then record by record.

#include "archive/table.h"

#include "archive/scramble.h"
#include "core/crc32_register.h"
#include "file/names.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <zel/file.h>

namespace Zel {
namespace {

constexpr int kVersion = 44;

/// The bytes that a table has in pieces, so that each piece stays in the processor's first cache.
constexpr std::size_t kPieceSize = 16384;

/// Returns the checksum of the unscrambled bytes.
std::uint32_t unscrambleAll(TableText& table) {
    Crc32Register crc;
    for (std::size_t at = 0; at < table.size(); at += kPieceSize) {
        std::size_t const count = std::min(kPieceSize, table.size() - at);
        unscramble(table.at(at), count);
        crc.update(table.at(at), count);
    }
    return crc.value();
}

/// The unscrambled table, checked against its CRC.
TableText readChecked(BinaryFile& file, std::string const& archiveName) {
    int version = 0;
    file >> version;
    if (version != kVersion)
        throw Exception_ArchiveVersionInvalid(archiveName.c_str(), version, kVersion);

    unsigned int length = 0;
    file >> length;
    if (length == 0)
        throw Exception_ArchiveCorrupt(archiveName.c_str());
    // A length that the file cannot fill takes no memory: reading on would end in the same error.
    if (length > static_cast<unsigned int>(file.getSize() - file.getPosition()))
        throw FileException_ReadError(archiveName.c_str());

    TableText table(length);
    file.read(table.at(0), static_cast<int>(length));
    unsigned int storedCrc = 0;
    file >> storedCrc;
    Archive::decrypt(&storedCrc, sizeof storedCrc);
    if (unscrambleAll(table) != storedCrc)
        throw Exception_ArchiveCorrupt(archiveName.c_str());
    return table;
}

/// Where each record starts. Throws when they do not fill the table, or an entry is empty.
std::vector<std::uint32_t> findRecords(TableText const& table, std::string const& archiveName) {
    std::vector<std::uint32_t> records;
    for (std::size_t at = 0; at < table.size();) {
        unsigned char const* const record = table.at(at);
        std::size_t const left = table.size() - at;
        if (left < recordSize(0) || littleEndian32(record) > left - recordSize(0))
            throw Exception_ArchiveCorrupt(archiveName.c_str());
        if (recordInfo(record).size == 0)
            throw Exception_ArchiveCorrupt(archiveName.c_str());
        records.push_back(static_cast<std::uint32_t>(at));
        at += recordSize(littleEndian32(record));
    }
    return records;
}

/// The path that leads from a directory to a name.
std::string joined(std::string const& directory, std::string const& name) {
    Path path;
    path.append(directory);
    path.append(name);
    return std::move(path).str();
}

} // namespace

ArchiveEntries readTable(BinaryFile& file, std::string const& archiveName, std::string const& keyPrefix) {
    TableText table = readChecked(file, archiveName);
    std::vector<std::uint32_t> records = findRecords(table, archiveName);
    return {keyPrefix, std::move(table), std::move(records)};
}

void writeRecord(unsigned char* record, std::string_view name, Archive::FileInfo const& info) {
    putLittleEndian32(record, static_cast<std::uint32_t>(name.size()));
    unsigned char* const numbers = std::copy(name.begin(), name.end(), record + 4);
    putLittleEndian32(numbers, info.size);
    putLittleEndian32(numbers + 4, info.offset);
    putLittleEndian32(numbers + 8, info.crc);
}

void Archive::setFileName(std::string const& fileName) {
    m_fileName = fileName;
    BinaryFile file(fileName, File::READ, BinaryFile::BYTEORDER_NATIVE);
    std::string const directory = File::getCurrentDir();
    m_fullPath = joined(directory, fileName);
    m_openPath = joined(directory, toLowerCase(fileName));

    // The table is taken whole or not at all. Merging leaves the entries that are already here.
    m_entries->merge(readTable(file, fileName, toLowerCase(File::getDataDir())));
}

} // namespace Zel
