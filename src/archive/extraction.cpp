// Copies of archived files on disk.

#include "core/crc32_register.h"
#include "file/names.h"
#include "platform/platform.h"

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
    Record(std::string path, bool permanent) : m_pending(!permanent) {
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
    /// A temporary file never leads elsewhere, as one that is there already may.
    TargetFile(std::string const& path, bool permanent)
        : m_path(path),
          m_stream(permanent ? platform::openStream(path, "wb") : platform::createStream(path)) {}
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

/// Makes the directories that the relative path of a file names.
bool makeDirectories(std::string const& destination, std::string const& relative, bool permanent) {
    for (std::size_t end = relative.find('\\'); end != std::string::npos;
         end = relative.find('\\', end + 1)) {
        if (relative[end - 1] == '\\')
            continue; // an empty part
        std::string const directory = destination + relative.substr(0, end);
        Record record(directory + '\\', permanent); // the backslash tells a directory
        platform::Making const result = platform::makeDirectory(directory);
        if (result == platform::Making::Made)
            record.keep();
        if (result == platform::Making::Failed)
            return false;
        if (!permanent && platform::isLink(directory))
            return false; // it would lead out of the temporary directory
    }
    return true;
}

/// Copies an entry. False when nothing can be written at `target`. The checksum is taken of what is written,
/// as the archive may have changed since it was checked.
bool copyTo(std::string const& target, File& entry, std::uint32_t expectedCrc, bool permanent) {
    Record record(target, permanent);
    TargetFile copy(target, permanent);
    if (!copy.isOpen())
        return false;
    Crc32Register crc;
    std::array<unsigned char, kPieceSize> piece;
    while (!entry.endReached()) {
        int const left = entry.getSize() - entry.getPosition();
        std::size_t const count = std::min(piece.size(), static_cast<std::size_t>(left));
        entry.read(piece.data(), static_cast<int>(count));
        crc.update(piece.data(), count);
        if (!copy.write(piece.data(), count))
            throw FileException_WriteError(entry.getFilename().c_str());
    }
    if (crc.value() != expectedCrc)
        throw FileException_FileCorrupted(entry.getFilename().c_str());
    if (!copy.finish())
        throw FileException_WriteError(entry.getFilename().c_str());
    record.keep();
    return true;
}

/// The full path of a directory with a final separator, which is what the keys of its entries begin with.
std::string directoryPrefix(std::string const& directory) {
    std::string prefix = resolveName(directory);
    if (!prefix.ends_with('\\'))
        prefix += '\\';
    return prefix;
}

} // namespace

bool File::extract(std::string& name, Archive::FileInfo info, Archive const* archive, std::string destination,
                   bool permanent) {
    File entry;
    entry.m_filename = name;
    std::string const dataDirectory = toLowerCase(getDataDir());
    if (!entry.openArchive(*archive) || !name.starts_with(dataDirectory))
        return false;
    std::string const relative = withBackslashes(name.substr(dataDirectory.size()));
    if (destination.empty() || whyNotExtracted(relative) != nullptr)
        return false;
    if (!makeDirectories(destination, relative, permanent))
        return false;

    entry.enterEntry(*archive, info); // checked as a whole before anything is overwritten
    std::string target = destination + relative;
    if (!copyTo(target, entry, static_cast<std::uint32_t>(info.crc), permanent))
        return false;
    name = std::move(target);
    return true;
}

bool File::extractFile(std::string& name) {
    std::string const key = resolveName(name);
    std::string const destination = getTmpDir();
    name = key;
    Archive::FileInfo info;
    Archive const* const archive = findEntry(key, info);
    if (archive != nullptr && extract(name, info, archive, destination, false))
        return true;
    return getArchiveOnly() == 0 && platform::pathExists(name);
}

/// Extracts the entries of the newest archive that has any whose key contains `prefix`.
File::Extraction File::extractEntries(std::string const& prefix, std::string const& destination,
                                      bool permanent) {
    std::string key;
    Archive::FileInfo info;
    int slot = Archive::getArchiveCount() - 1;
    while (slot >= 0 && !Archive::getArchive(slot)->findFirstSubstring(prefix, key, info))
        --slot;
    if (slot < 0)
        return Extraction::None;

    Archive const* const archive = Archive::getArchive(slot);
    Extraction failed = Extraction::None;
    do {
        std::string name = key;
        if (!extract(name, info, archive, destination, permanent))
            return failed;
        failed = Extraction::Partly;
    } while (archive->findNextSubstring(prefix, key, key, info));
    return Extraction::Whole;
}

bool File::extractBelow(std::string prefix, std::string& dir, std::string const& destination,
                        bool permanent) {
    Extraction const extraction = extractEntries(prefix, destination, permanent);
    if (extraction != Extraction::None) {
        dir = withFinalSeparator(destination + dir);
        return extraction == Extraction::Whole;
    }
    if (getArchiveOnly() != 0)
        return false;
    dir = prefix;
    prefix.pop_back();
    return platform::pathExists(prefix);
}

bool File::extractDirectory(std::string& dir) {
    std::string const prefix = directoryPrefix(dir); // a name that leads nowhere makes no directory
    return extractBelow(prefix, dir, getTmpDir(), false);
}

bool File::extractDirectoryPermanent(std::string& dir, std::string destination) {
    return extractBelow(directoryPrefix(dir), dir, destination, true);
}

} // namespace Zel
