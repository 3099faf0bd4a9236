// All entries of an archive, read straight from its file: the library opens entries by names that it folds,
// and so not those stored in capitals or under a name that another archive or entry hides.

#include "archive/mounted_archive.h"

#include "archive/names.h"
#include "command_line/failure.h"
#include "command_line/printable_text.h"
#include "host/host_path.h"

#include <algorithm>
#include <new>
#include <numeric>
#include <zel/crc32.h>

namespace zel {

MountedArchive::MountedArchive(std::string const& hostPath) try
    : m_name(libraryName(hostPath)),
      m_file(m_name, Zel::File::READ),
      m_archive(m_name),
      m_keyPrefix(toLowerCase(Zel::File::getDataDir())) {
    ArchiveEntry entry;
    std::string key;
    bool found = m_archive.findFirstSubstring("", key, entry.info);
    while (found) {
        entry.name = key.substr(m_keyPrefix.size());
        m_entries.push_back(entry);
        found = m_archive.findNextSubstring("", key, key, entry.info);
    }
} catch (std::bad_alloc const&) {
    throw outOfMemory(hostPath);
}

std::optional<ArchiveEntry> MountedArchive::find(std::string const& name) const {
    ArchiveEntry entry{name, {}};
    if (m_archive.findFile(m_keyPrefix + name, entry.info))
        return entry;
    Zel::Path path(Zel::File::getDataDir());
    path.append(name);
    std::string const key = toLowerCase(path.str());
    if (!key.starts_with(m_keyPrefix) || !m_archive.findFile(key, entry.info))
        return std::nullopt;
    entry.name = key.substr(m_keyPrefix.size());
    return entry;
}

void MountedArchive::check(ArchiveEntry const& entry) {
    readInPieces(entry, [](std::string const& /*piece*/) {});
}

void MountedArchive::readInPieces(ArchiveEntry const& entry,
                                  std::function<void(std::string const& piece)> const& take) {
    constexpr std::size_t kPieceSize = 65536;
    auto const& [name, info] = entry;
    if (std::uint64_t{info.offset} + info.size > static_cast<std::uint64_t>(m_file.getSize()))
        throw Zel::FileException_ReadError(printableInQuotes(name).c_str());
    m_file.setPosition(static_cast<int>(info.offset));
    unsigned long crc = 0;
    whileReading(name, [&, size = std::size_t{info.size}] {
        std::string piece;
        for (std::size_t left = size; left > 0; left -= piece.size()) {
            piece.resize(std::min(left, kPieceSize));
            m_file.read(piece.data(), static_cast<int>(piece.size()));
            Zel::Archive::decrypt(piece.data(), static_cast<int>(piece.size()));
            crc = Zel::crc32(piece.data(), piece.size(), crc);
            take(piece);
        }
    });
    if (crc != info.crc)
        throw Zel::FileException_FileCorrupted(printableInQuotes(name).c_str());
}

std::uint64_t totalSize(std::vector<ArchiveEntry> const& entries) {
    return std::accumulate(
        entries.begin(), entries.end(), std::uint64_t{0},
        [](std::uint64_t sum, ArchiveEntry const& entry) { return sum + entry.info.size; });
}

} // namespace zel
