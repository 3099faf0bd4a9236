// One open file: finding it in the archives or on disk, reading, writing and positioning.

#include "archive/scramble.h"
#include "core/crc32_register.h"
#include "file/names.h"
#include "platform/platform.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <zel/archive.h>
#include <zel/file.h>

namespace Zel {
namespace {

constexpr std::int32_t kLargestPosition = std::numeric_limits<std::int32_t>::max();

constexpr std::size_t kPieceSize = 16384;

/// The sum as 32 bits hold it. A position that wraps round names no place in any file: seeking there fails.
std::int32_t wrappingSum(std::int32_t a, std::int64_t b) { return static_cast<std::int32_t>(a + b); }

/// As fread, at next to no cost for the few bytes of a typed value when the stream holds them. A null stream
/// has no bytes.
std::size_t readBytes(std::FILE* stream, void* buffer, std::size_t count) {
    if (stream == nullptr)
        return 0;
    std::string_view const held = platform::heldBytes(stream);
    if (count == 0 || count > held.size())
        return std::fread(buffer, 1, count, stream);
    switch (count) { // a copy of known length is one instruction
    case 1:
        std::memcpy(buffer, held.data(), 1);
        break;
    case 2:
        std::memcpy(buffer, held.data(), 2);
        break;
    case 4:
        std::memcpy(buffer, held.data(), 4);
        break;
    default:
        std::memcpy(buffer, held.data(), count);
    }
    platform::passReadAhead(stream, count);
    return count;
}

} // namespace

File::File() { initializeMembers(); } // NOLINT(cppcoreguidelines-pro-type-member-init)

// Delegating: once File() is done, the destructor closes the stream even when this body throws.
File::File(std::string const& name, Mode mode) : File() {
    m_filename = name;
    m_mode = mode;
    std::string const path = resolveName(name);
    if (hasZeroByte(name))
        throw FileException_OpenFailed(name.c_str());

    switch (mode) {
    case READ:
    case READ_TEXT:
        if (!openArchived(path))
            openLoose(path);
        break;
    case WRITE:
        m_handle = platform::openStream(path, "wb");
        break;
    case WRITE_TEXT:
        m_handle = platform::openStream(path, "w");
        break;
    }
    if (m_handle == nullptr)
        throw FileException_OpenFailed(name.c_str());
}

File::~File() {
    if (m_handle != nullptr)
        std::fclose(m_handle);
    initializeMembers();
}

void File::initializeMembers() {
    m_filename.clear();
    m_mode = READ;
    m_size = 0;
    m_offset = 0;
    m_archive = nullptr;
    m_handle = nullptr;
    m_position = 0;
}

/// The newest archive with an entry of this key; null when none has one.
Archive const* File::findEntry(std::string const& key, Archive::FileInfo& info) {
    for (int slot = Archive::getArchiveCount() - 1; slot >= 0; --slot) {
        if (Archive::getArchive(slot)->findFile(key, info))
            return Archive::getArchive(slot);
    }
    return nullptr;
}

/// Opens the entry of the newest archive that has one. False when none has, or when that archive itself
/// cannot be opened: then the disk is asked, as if there were no entry.
bool File::openArchived(std::string const& path) {
    Archive::FileInfo info;
    Archive const* const archive = findEntry(path, info);
    if (archive == nullptr || !openArchive(*archive))
        return false;
    enterEntry(*archive, info);
    return true;
}

bool File::openArchive(Archive const& archive) {
    m_handle = platform::openStream(archive.m_openPath, "rb");
    return m_handle != nullptr;
}

/// Makes the open stream of an archive the file of one entry, whose checksum is right.
void File::enterEntry(Archive const& archive, Archive::FileInfo const& info) {
    if (info.offset > kLargestPosition)
        throw FileException_SeekError(m_filename.c_str());
    if (info.size > kLargestPosition - info.offset)
        throw FileException_ReadError(m_filename.c_str());
    m_archive = &archive;
    m_offset = static_cast<std::int32_t>(info.offset);
    m_size = static_cast<std::int32_t>(info.size);
    checkEntry(info.crc);
}

void File::openLoose(std::string const& path) {
    m_handle = platform::openStream(path, "rb");
    if (m_handle == nullptr)
        return;
    std::int64_t const length = platform::streamLength(m_handle);
    if (length < 0 || length > kLargestPosition)
        throw FileException_OpenFailed(m_filename.c_str());
    m_size = static_cast<std::int32_t>(length);
}

/// Reads the whole entry once, in pieces that stay in the processor's first cache.
void File::checkEntry(std::uint32_t expectedCrc) {
    std::array<unsigned char, kPieceSize> piece;
    Crc32Register crc;
    setPosition(0);
    while (!endReached()) {
        int const count = std::min<int>(piece.size(), getSize() - getPosition());
        read(piece.data(), count);
        crc.update(piece.data(), static_cast<std::size_t>(count));
    }
    if (crc.value() != expectedCrc)
        throw FileException_FileCorrupted(m_filename.c_str());
    setPosition(0);
}

std::string const& File::getFilename() const { return m_filename; }

File::Mode File::getMode() {
    return m_mode;
} // NOLINT(readability-make-member-function-const): as callers know it

int File::getSize() const { return m_size; }

int File::getPosition() const { return wrappingSum(m_position, -std::int64_t{m_offset}); }

void File::setPosition(int position) {
    m_position = wrappingSum(position, m_offset);
    if (m_handle == nullptr || std::fseek(m_handle, m_position, SEEK_SET) != 0) {
        m_inStep.value = false;
        throw FileException_SeekError(m_filename.c_str());
    }
}

void File::read(void* buffer, int count) {
    if (count < 0 || std::int64_t{m_position} + count > std::int64_t{m_offset} + m_size)
        throw FileException_ReadError(m_filename.c_str());
    auto const wanted = static_cast<std::size_t>(count);
    std::size_t const arrived = readBytes(readStream(), buffer, wanted);
    m_position = wrappingSum(m_position, static_cast<std::int64_t>(arrived));
    if (arrived < wanted)
        throw FileException_ReadError(m_filename.c_str());
    if (m_archive != nullptr)
        unscramble(buffer, wanted);
}

void File::write(void const* buffer, int count) {
    if (count < 0 || count > kLargestPosition - std::int64_t{std::max(m_size, m_position)})
        throw FileException_WriteError(m_filename.c_str());
    auto const given = static_cast<std::size_t>(count);
    std::FILE* const stream = writeStream();
    std::size_t const written = stream != nullptr ? std::fwrite(buffer, 1, given, stream) : 0;
    m_position = wrappingSum(m_position, static_cast<std::int64_t>(written));
    m_size = wrappingSum(m_size, static_cast<std::int64_t>(written)); // Meant: overwriting grows it too.
    if (written < given)
        throw FileException_WriteError(m_filename.c_str());
}

void File::flush() {
    std::FILE* const stream = writeStream(); // what Windows would drop of another is what it has read ahead
    if (stream != nullptr && std::fflush(stream) != 0)
        throw FileException_WriteError(m_filename.c_str());
}

} // namespace Zel
