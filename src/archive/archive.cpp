// An archive's life in the registry, and its lookups.

#include "archive/entries.h"
#include "core/usage_error.h"
#include "file/names.h"

#include <algorithm>
#include <zel/archive.h>
#include <zel/file.h>

namespace Zel {
namespace {

/// The first archive remembers the current directory while the working directory still decides it.
void rememberCurrentDir() {
    if (Archive::sm_vecArchives.empty())
        File::getCurrentDir();
}

} // namespace

std::vector<Archive*> Archive::sm_vecArchives;

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

bool Archive::hasFile(std::string const& key) const { return m_entries->find(key).has_value(); }

bool Archive::findFile(std::string const& key, FileInfo& info) const {
    auto const position = m_entries->find(key);
    if (!position)
        return false;
    info = m_entries->access(*position);
    return true;
}

bool Archive::findFirstSubstring(std::string part, std::string& key, FileInfo& info) const {
    return findFrom(0, part, key, info);
}

bool Archive::findNextSubstring(std::string part, std::string previous, std::string& key,
                                FileInfo& info) const {
    auto const position = m_entries->find(previous);
    if (!position)
        usageError("Archive::findNextSubstring: \"%s\" is not a key of \"%s\"", previous.c_str(),
                   m_fullPath.c_str());
    return findFrom(*position + 1, part, key, info);
}

bool Archive::findFrom(std::size_t position, std::string const& part, std::string& key,
                       FileInfo& info) const {
    for (; position < m_entries->size(); ++position) {
        std::string candidate = m_entries->keyAt(position);
        if (candidate.find(part) == std::string::npos)
            continue;
        key = std::move(candidate);
        info = m_entries->access(position);
        return true;
    }
    return false;
}

} // namespace Zel
