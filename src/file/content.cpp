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
    if (!isOpen())
        throw FileException_OpenFailed(name.c_str());
}

FileContent::FileContent(Archive const& archive, Archive::FileInfo const& info, std::string const& name)
    : m_name(name) {
    openEntry(archive, info);
}

void FileContent::openEntry(Archive const& archive, Archive::FileInfo const& info) {
    m_stream = platform::openStream(archive.m_openPath, platform::Open::Read);
    if (!isOpen())
        return;
    m_archive = &archive;
    m_info = info;
}

void FileContent::openLoose(std::string const& path) {
    m_stream = platform::openStream(path, platform::Open::Read);
    std::int64_t const length = isOpen() ? platform::streamLength(m_stream.get()) : 0;
    if (length < 0 || length > kLargestPosition)
        throw FileException_OpenFailed(m_name.c_str());
    m_info.size = static_cast<std::uint32_t>(length);
}

void FileContent::begin() {
    if (m_info.offset > kLargestPosition)
        throw FileException_SeekError(m_name.c_str());
    if (m_info.size > kLargestPosition - m_info.offset)
        throw FileException_ReadError(m_name.c_str());
    if (m_archive != nullptr && std::fseek(m_stream.get(), offset(), SEEK_SET) != 0)
        throw FileException_SeekError(m_name.c_str());
    m_left = m_info.size;
    m_crc = Crc32Register();
}

/// An archive may be shorter than it promises: reading would end in the same error.
void FileContent::requireHeld() const {
    if (m_archive != nullptr && platform::streamLength(m_stream.get()) < offset() + std::int64_t{size()})
        throw FileException_ReadError(m_name.c_str());
}

void FileContent::read(void* bytes, std::size_t count) {
    if (std::fread(bytes, 1, count, m_stream.get()) != count)
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
