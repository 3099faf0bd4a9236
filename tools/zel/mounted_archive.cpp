// All entries of an archive, read straight from its file.

#include "mounted_archive.h"

#include "fold.h"
#include "host_path.h"

#include <numeric>
#include <zel/crc32.h>

namespace zel {

MountedArchive::MountedArchive(std::string const& hostPath)
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

std::string MountedArchive::read(ArchiveEntry const& entry) {
    auto const& [name, info] = entry;
    if (std::uint64_t{info.offset} + info.size > static_cast<std::uint64_t>(m_file.getSize()))
        throw Zel::FileException_ReadError(name.c_str());
    std::string content(info.size, '\0');
    m_file.setPosition(static_cast<int>(info.offset));
    m_file.read(content.data(), static_cast<int>(info.size));
    Zel::Archive::decrypt(content.data(), static_cast<int>(info.size));
    if (Zel::crc32(content.data(), content.size()) != info.crc)
        throw Zel::FileException_FileCorrupted(name.c_str());
    return content;
}

std::uint64_t totalSize(std::vector<ArchiveEntry> const& entries) {
    return std::accumulate(
        entries.begin(), entries.end(), std::uint64_t{0},
        [](std::uint64_t sum, ArchiveEntry const& entry) { return sum + entry.info.size; });
}

} // namespace zel
