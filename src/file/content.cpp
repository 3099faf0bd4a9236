// Opening a file for reading, and reading it as what it is.

#include "file/content.h"

#include "archive/scramble.h"
#include "file/names.h"
#include "file/registry.h"

#include <zel/exception.h>

namespace Zel {

FileContent::FileContent(std::string const& name) : m_name(name) {
    std::string const path = pathToOpen(name);
    Archive::FileInfo info;
    if (Archive const* const holder = findEntry(path, info))
        openEntry(*holder, info);
    if (!isOpen()) // an archive that cannot be opened counts as one without the file
        openLoose(path);
}

FileContent::FileContent(Archive const& archive, Archive::FileInfo const& info, std::string const& name)
    : m_name(name) {
    openEntry(archive, info);
}

void FileContent::openEntry(Archive const& archive, Archive::FileInfo const& info) {
    m_source = platform::Source(archive.m_openPath);
    if (!isOpen())
        return;
    m_archive = &archive;
    m_info = info;
}

void FileContent::openLoose(std::string const& path) {
    m_source = platform::Source(path);
    if (!isOpen() || m_source.length() < 0 || m_source.length() > kLargestPosition)
        throw FileException_OpenFailed(m_name.c_str());
    m_info.size = static_cast<std::uint32_t>(m_source.length());
}

void FileContent::begin() {
    if (m_info.offset > kLargestPosition)
        throw FileException_SeekError(m_name.c_str());
    if (m_info.size > kLargestPosition - m_info.offset)
        throw FileException_ReadError(m_name.c_str());
    if (m_archive != nullptr && !m_source.seek(offset()))
        throw FileException_SeekError(m_name.c_str());
    m_left = m_info.size;
    m_crc = Crc32Register();
}

/// An archive may be shorter than it promises: reading would end in the same error.
void FileContent::requireHeld() const {
    if (m_archive != nullptr && m_source.length() < offset() + std::int64_t{size()})
        throw FileException_ReadError(m_name.c_str());
}

void FileContent::read(void* bytes, std::size_t count) {
    if (m_source.read(bytes, count) != count)
        throw FileException_ReadError(m_name.c_str());
    m_left -= count;
    if (m_archive == nullptr)
        return;
    unscramble(bytes, count);
    m_crc.update(bytes, count);
    if (m_left == 0 && m_crc.value() != m_info.crc)
        throw FileException_FileCorrupted(m_name.c_str());
}

void FileContent::check() {
    if (m_archive == nullptr)
        return;
    readInPieces([](unsigned char const* /*bytes*/, std::size_t /*count*/) {});
    begin();
}

} // namespace Zel
