// The bytes of a file that is opened for reading, archived or loose.
#pragma once

#include "core/crc32_register.h"
#include "platform/platform.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <zel/archive.h>

namespace Zel {

/// Files are positioned and measured with 32 bits.
constexpr std::int64_t kLargestPosition = std::numeric_limits<std::int32_t>::max();

/// Opens a file and reads it from start to end. Keeps to the bounds of an archived file, unscrambles it, and
/// compares its checksum at the end.
///
/// Exceptions name the file by the text given to the constructor, which must outlive this object.
class FileContent {
public:
    /// What a File of that name reads: the entry of the newest archive that has one. When there is none, or
    /// that archive cannot be opened: the file on the disk. Throws FileException_DirectoryNotFound and
    /// FileException_OpenFailed as File does.
    explicit FileContent(std::string const& name);

    /// An entry of an archive. It is not open when the archive's file cannot be opened.
    FileContent(Archive const& archive, Archive::FileInfo const& info, std::string const& name);

    bool isOpen() const { return m_source.isOpen(); }
    std::int32_t size() const { return static_cast<std::int32_t>(m_info.size); }
    std::int32_t offset() const { return static_cast<std::int32_t>(m_info.offset); }
    /// Null for a loose file.
    Archive const* archive() const { return m_archive; }

    /// Calls `take(bytes, count)` with everything from the first byte on, piece by piece. Throws as check().
    template <class Take>
    void readInPieces(Take take) {
        std::array<unsigned char, kPieceSize> piece;
        begin();
        while (m_left > 0) {
            std::size_t const count = std::min(m_left, piece.size());
            read(piece.data(), count);
            take(piece.data(), count);
        }
    }

    /// Reads everything into the memory that `allocate(size)` gives, which is not asked for more bytes than
    /// the host's file holds. Throws as check().
    template <class Allocate>
    void readWhole(Allocate allocate) {
        begin();
        requireHeld();
        auto* to = reinterpret_cast<unsigned char*>(allocate(m_left));
        for (std::size_t count; m_left > 0; to += count) {
            count = m_archive != nullptr ? std::min(m_left, kPieceSize) : m_left;
            read(to, count);
        }
    }

    /// Reads an archived file through to compare its checksum, and goes to its first byte. Throws
    /// FileException_SeekError or FileException_ReadError when the archive promises bytes that no stream
    /// reaches or the host delivers too few, and FileException_FileCorrupted when the checksum differs.
    void check();

    /// Gives the file away, to a stream that stands where this object does. Null on failure.
    platform::Stream toStream() { return m_source.toStream(); }

private:
    /// What is unscrambled and summed in pieces stays in the processor's first cache.
    static constexpr std::size_t kPieceSize = 16384;

    /// Goes to the first byte, where a loose file stands from the start.
    void begin();
    /// Reads the next bytes, no more than are left. The last ones bring the checksum's verdict.
    void read(void* bytes, std::size_t count);
    void openEntry(Archive const& archive, Archive::FileInfo const& info);
    void openLoose(std::string const& path);
    void requireHeld() const;

    std::string const& m_name;
    platform::Source m_source;
    Archive const* m_archive = nullptr;
    Archive::FileInfo m_info;
    std::size_t m_left = 0;
    Crc32Register m_crc; // of what was read, unscrambled
};

} // namespace Zel
