// An archive's life in the registry, its loading, and its lookups.

#include "archive/entries.h"
#include "archive/scramble.h"
#include "core/usage_error.h"
#include "file/names.h"

#include <algorithm>
#include <utility>
#include <zel/archive.h>
#include <zel/file.h>

namespace Zel {
namespace {

/// The first archive remembers the current directory while the working directory still decides it.
void rememberCurrentDir() {
    if (Archive::sm_vecArchives.empty())
        File::getCurrentDir();
}

/// The path that leads from a directory to a name.
std::string joined(std::string const& directory, std::string const& name) {
    Path path;
    path.append(directory);
    path.append(name);
    return std::move(path).str();
}

/// What a lookup tells of an entry, which counts as accessed from then on.
Archive::FileInfo access(ArchiveEntries& entries, ArchiveEntries::Place place) {
    entries.markAccessed(place);
    Record const record = entries.recordAt(place);
    return {record.size, record.offset, record.crc, 1};
}

/// Finds the next entry on a walk whose key contains `part`.
bool findSubstring(ArchiveEntries& entries, ArchiveEntries::Walk walk, std::string const& part,
                   std::string& key, Archive::FileInfo& info) {
    std::string candidate;
    while (auto const place = walk.next(candidate)) {
        if (candidate.find(part) == std::string::npos)
            continue;
        key = std::move(candidate);
        info = access(entries, *place);
        return true;
    }
    return false;
}

} // namespace

std::vector<Archive*> Archive::sm_vecArchives;

// Members have their first values in the class; a constructor adds what differs.
Archive::Archive() : m_entries(std::make_unique<ArchiveEntries>()) {
    rememberCurrentDir();
    sm_vecArchives.push_back(this);
}

Archive::Archive(std::string const& fileName) : m_entries(std::make_unique<ArchiveEntries>()) {
    rememberCurrentDir();
    setFileName(fileName);
    sm_vecArchives.push_back(this);
}

Archive::Archive(Archive const& other)
    : m_fileName(other.m_fileName),
      m_fullPath(other.m_fullPath),
      m_openPath(other.m_openPath),
      m_entries(std::make_unique<ArchiveEntries>(*other.m_entries)) {}

Archive& Archive::operator=(Archive const& other) {
    if (this != &other) {
        auto entries = std::make_unique<ArchiveEntries>(*other.m_entries);
        m_fileName = other.m_fileName;
        m_fullPath = other.m_fullPath;
        m_openPath = other.m_openPath;
        m_entries = std::move(entries);
    }
    return *this;
}

Archive::~Archive() {
    auto const slot = std::find(sm_vecArchives.begin(), sm_vecArchives.end(), this);
    if (slot != sm_vecArchives.end())
        sm_vecArchives.erase(slot);
}

int Archive::getArchiveCount() {
    return static_cast<int>(
        std::count_if(sm_vecArchives.begin(), sm_vecArchives.end(),
                      [](Archive const* archive) { return !archive->m_fileName.empty(); }));
}

Archive const* Archive::getArchive(int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= sm_vecArchives.size())
        usageError("Archive::getArchive: no slot %d among %d", index,
                   static_cast<int>(sm_vecArchives.size()));
    return sm_vecArchives[static_cast<std::size_t>(index)];
}

std::string const& Archive::getFullPath() const { return m_fullPath; }

void Archive::setFileName(std::string const& fileName) {
    m_fileName = fileName;
    BinaryFile file(fileName, File::READ, BinaryFile::BYTEORDER_NATIVE);
    std::string const directory = File::getCurrentDir();
    m_fullPath = joined(directory, fileName);
    m_openPath = joined(directory, toLowerCase(fileName));

    auto const read = [&file](void* bytes, std::size_t count) {
        file.read(bytes, static_cast<int>(count));
    };
    EntryTable table(static_cast<std::uint64_t>(file.getSize()), read, fileName);
    m_entries->add(toLowerCase(File::getDataDir()), std::move(table));
}

void Archive::decrypt(void* data, int length) {
    if (length > 0)
        unscramble(data, static_cast<std::size_t>(length));
}

bool Archive::hasFile(std::string const& key) const { return m_entries->find(key).has_value(); }

bool Archive::findFile(std::string const& key, FileInfo& info) const {
    auto const place = m_entries->find(key);
    if (!place)
        return false;
    info = access(*m_entries, *place);
    return true;
}

bool Archive::findFirstSubstring(std::string part, std::string& key, FileInfo& info) const {
    return findSubstring(*m_entries, ArchiveEntries::Walk(*m_entries), part, key, info);
}

bool Archive::findNextSubstring(std::string part, std::string previous, std::string& key,
                                FileInfo& info) const {
    auto const place = m_entries->find(previous);
    if (!place)
        usageError("Archive::findNextSubstring: \"%s\" is not a key of \"%s\"", previous.c_str(),
                   m_fullPath.c_str());
    return findSubstring(*m_entries, ArchiveEntries::Walk(*m_entries, *place), part, key, info);
}

} // namespace Zel
