// Making the directories and files of an extraction, and recording them.

#include "extraction/target.h"

#include "extraction/temporary.h"
#include "platform/path_parts.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <zel/file.h>

namespace Zel {
namespace {

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
    TargetFile(platform::Tree& tree, std::string path)
        : m_tree(tree), m_path(std::move(path)), m_stream(m_tree.openFile(m_path, platform::Open::Write)) {}
    TargetFile(TargetFile const&) = delete;
    TargetFile& operator=(TargetFile const&) = delete;
    ~TargetFile() {
        if (m_stream) {
            m_stream.reset();
            m_tree.removeFile(m_path);
        }
    }

    bool isOpen() const { return m_stream != nullptr; }

    bool write(std::span<unsigned char const> bytes) {
        return std::fwrite(bytes.data(), 1, bytes.size(), m_stream.get()) == bytes.size();
    }

    /// False when the disk refuses what was still in the stream's buffer.
    bool finish() {
        if (std::fclose(m_stream.release()) == 0)
            return true;
        m_tree.removeFile(m_path);
        return false;
    }

private:
    platform::Tree& m_tree;
    std::string m_path;
    platform::Stream m_stream;
};

} // namespace

// The library's own temporary directories are private up to the data folder; a caller's begins where it says.
ExtractionTarget::ExtractionTarget(std::string directory, Lifetime lifetime)
    : m_directory(std::move(directory)),
      m_lifetime(lifetime),
      m_rootLength(isTemporary() && !m_directory.empty() ? privatePart(m_directory)
                                                         : File::getFileDir(m_directory).size()),
      m_tree(m_directory.substr(0, m_rootLength),
             isTemporary() ? platform::Tree::Private : platform::Tree::Own) {}

bool ExtractionTarget::makeDirectories(std::string const& relative) {
    // Those that the entry before has, too, are there.
    auto const differing = std::mismatch(m_made.begin(), m_made.end(), relative.begin(), relative.end());
    std::size_t const shared = static_cast<std::size_t>(differing.first - m_made.begin());
    std::size_t const begin = relative.substr(0, shared).rfind('\\') + 1; // 0 without a separator
    PathParts parts(std::string_view(relative).substr(begin));
    while (parts.next() && !parts.isLast()) {
        if (parts.staysInPlace())
            continue;
        std::string path = m_directory + relative.substr(0, begin);
        path.append(parts.upToHere()) += '\\'; // which tells a directory
        Record record(path, isTemporary());
        platform::Making const result = m_tree.makeDirectory(path.substr(m_rootLength));
        if (result == platform::Making::Failed)
            return false;
        if (result == platform::Making::Made)
            record.keep();
    }
    m_made = relative.substr(0, relative.rfind('\\') + 1);
    return true;
}

bool ExtractionTarget::write(std::span<unsigned char const> content, std::string const& key,
                             std::string const& relative) {
    std::string path = m_directory + relative;
    Record record(path, isTemporary());
    TargetFile target(m_tree, path.substr(m_rootLength));
    if (!target.isOpen())
        return false;
    if (!target.write(content) || !target.finish())
        throw FileException_WriteError(key.c_str());
    record.keep();
    return true;
}

} // namespace Zel
