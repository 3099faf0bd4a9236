// Reading the table of an archive file: checked as a whole, then record by record.

#include "archive/table.h"

#include "core/crc32_register.h"
#include "core/little_endian.h"
#include "file/names.h"

#include <limits>
#include <utility>
#include <vector>
#include <zel/file.h>

namespace Zel {
namespace {

constexpr int kVersion = 44;
constexpr std::size_t kNumberSize = 4;
constexpr std::size_t kRecordNumbers = 3 * kNumberSize; // what follows the name

/// The unscrambled table, checked against its CRC.
std::vector<unsigned char> readChecked(BinaryFile& file, std::string const& archiveName) {
    int version = 0;
    file >> version;
    if (version != kVersion)
        throw Exception_ArchiveVersionInvalid(archiveName.c_str(), version, kVersion);

    unsigned int length = 0;
    file >> length;
    if (length == 0 || length > static_cast<unsigned int>(std::numeric_limits<int>::max()))
        throw Exception_ArchiveCorrupt(archiveName.c_str());
    // A length that the file cannot fill takes no memory: reading on would end in the same error.
    int const tableLength = static_cast<int>(length);
    if (tableLength > file.getSize() - file.getPosition())
        throw FileException_ReadError(archiveName.c_str());

    std::vector<unsigned char> table(length);
    file.read(table.data(), tableLength);
    Archive::decrypt(table.data(), tableLength);

    unsigned int storedCrc = 0;
    file >> storedCrc;
    Archive::decrypt(&storedCrc, sizeof storedCrc);
    Crc32Register crc;
    crc.update(table.data(), table.size());
    if (crc.value() != storedCrc)
        throw Exception_ArchiveCorrupt(archiveName.c_str());
    return table;
}

} // namespace

std::map<std::string, Archive::FileInfo> readTable(BinaryFile& file, std::string const& archiveName,
                                                   std::string const& keyPrefix) {
    std::vector<unsigned char> const table = readChecked(file, archiveName);
    std::map<std::string, Archive::FileInfo> entries;
    std::string key = keyPrefix;
    for (std::size_t at = 0; at < table.size();) {
        std::size_t const left = table.size() - at;
        if (left < kNumberSize + kRecordNumbers)
            throw Exception_ArchiveCorrupt(archiveName.c_str());
        std::size_t const nameLength = littleEndian32(&table[at]);
        if (nameLength > left - kNumberSize - kRecordNumbers)
            throw Exception_ArchiveCorrupt(archiveName.c_str());

        unsigned char const* const name = table.data() + at + kNumberSize;
        unsigned char const* const numbers = name + nameLength;
        Archive::FileInfo info;
        info.size = littleEndian32(numbers);
        info.offset = littleEndian32(numbers + kNumberSize);
        info.crc = littleEndian32(numbers + 2 * kNumberSize);
        if (info.size == 0)
            throw Exception_ArchiveCorrupt(archiveName.c_str());

        key.replace(keyPrefix.size(), std::string::npos, reinterpret_cast<char const*>(name), nameLength);
        entries.emplace_hint(entries.end(), key, info); // tables mostly come in key order; never overwrites
        at += kNumberSize + nameLength + kRecordNumbers;
    }
    return entries;
}

void Archive::setFileName(std::string const& fileName) {
    m_fileName = fileName;
    BinaryFile file(fileName, File::READ, BinaryFile::BYTEORDER_NATIVE);
    Path fullPath;
    fullPath.append(File::getCurrentDir());
    fullPath.append(fileName);
    m_fullPath = fullPath.str();

    // The table is taken whole or not at all. Merging leaves the entries that are already here.
    m_entries.merge(readTable(file, fileName, toLowerCase(File::getDataDir())));
}

} // namespace Zel
