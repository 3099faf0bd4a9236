// Making the directories and files of an extraction, and recording them.

#include "archive/extraction_target.h"

#include "core/crc32_register.h"

#include <algorithm>
#include <array>
#include <utility>
#include <zel/file.h>

namespace Zel {
namespace {

constexpr std::size_t kPieceSize = 16384;

/// An entry in the record of what `cleanup` removes. It is made before the file or directory is, so that
/// nothing stays behind when memory runs out, and taken back unless that was made.
class Record {
public:
    Record(std::string path, bool isTemporary) : m_pending(isTemporary) {
        if (m_pending)
            File::sm_extractedFiles.push_back(std::move(path));
    }
    Record(Record const&) = delete;
    Record& operator=(Record const&) = delete;
    ~Record() {
        if (m_pending)
            File::sm_extractedFiles.pop_back();
    }

    void keep() { m_pending = false; }

private:
    bool m_pending;
};

/// A file being written, which goes away again unless all of it could be stored.
class TargetFile {
public:
    /// Takes the stream, which may be null.
    TargetFile(std::string const& path, std::FILE* stream) : m_path(path), m_stream(stream) {}
    TargetFile(TargetFile const&) = delete;
    TargetFile& operator=(TargetFile const&) = delete;
    ~TargetFile() {
        if (m_stream) {
            m_stream.reset();
            platform::removeFile(m_path);
        }
    }

    bool isOpen() const { return m_stream != nullptr; }

    bool write(void const* bytes, std::size_t count) {
        return std::fwrite(bytes, 1, count, m_stream.get()) == count;
    }

    /// False when the disk refuses what was still in the stream's buffer.
    bool finish() {
        if (std::fclose(m_stream.release()) == 0)
            return true;
        platform::removeFile(m_path);
        return false;
    }

private:
    std::string const& m_path;
    platform::Stream m_stream;
};

} // namespace

bool ExtractionTarget::makeDirectories(std::string const& relative) const {
    for (std::size_t end = relative.find('\\'); end != std::string::npos;
         end = relative.find('\\', end + 1)) {
        if (relative[end - 1] == '\\')
            continue; // an empty part
        std::string const path = m_directory + relative.substr(0, end);
        Record record(path + '\\', isTemporary()); // the backslash tells a directory
        platform::Making const result = platform::makeDirectory(path);
        if (result == platform::Making::Made)
            record.keep();
        if (result == platform::Making::Failed)
            return false;
        if (isTemporary() && platform::isLink(path))
            return false; // it would lead out of the temporary directory
    }
    return true;
}

bool ExtractionTarget::copy(File& entry, std::uint32_t expectedCrc, std::string const& relative) {
    std::string const path = m_directory + relative;
    Record record(path, isTemporary());
    TargetFile target(path,
                      isTemporary() ? platform::createStream(path) : platform::overwriteStream(path, m_seen));
    if (!target.isOpen())
        return false;
    Crc32Register crc; // of what is written: the archive may have changed since it was checked
    std::array<unsigned char, kPieceSize> piece;
    while (!entry.endReached()) {
        int const left = entry.getSize() - entry.getPosition();
        std::size_t const count = std::min(piece.size(), static_cast<std::size_t>(left));
        entry.read(piece.data(), static_cast<int>(count));
        crc.update(piece.data(), count);
        if (!target.write(piece.data(), count))
            throw FileException_WriteError(entry.getFilename().c_str());
    }
    if (crc.value() != expectedCrc)
        throw FileException_FileCorrupted(entry.getFilename().c_str());
    if (!target.finish())
        throw FileException_WriteError(entry.getFilename().c_str());
    record.keep();
    return true;
}

} // namespace Zel
