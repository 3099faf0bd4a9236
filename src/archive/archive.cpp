// An archive's life in the registry, and its lookups.

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

Archive::Archive() {
    rememberCurrentDir();
    sm_vecArchives.push_back(this);
}

Archive::Archive(std::string const& fileName) {
    rememberCurrentDir();
    setFileName(fileName);
    sm_vecArchives.push_back(this);
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

bool Archive::hasFile(std::string const& key) const { return m_entries.find(key) != m_entries.end(); }

bool Archive::findFile(std::string const& key, FileInfo& info) const {
    auto const entry = m_entries.find(key);
    if (entry == m_entries.end())
        return false;
    entry->second.accessed = 1;
    info = entry->second;
    return true;
}

bool Archive::findFirstSubstring(std::string part, std::string& key, FileInfo& info) const {
    return findFrom(m_entries.begin(), part, key, info);
}

bool Archive::findNextSubstring(std::string part, std::string previous, std::string& key,
                                FileInfo& info) const {
    auto const entry = m_entries.find(previous);
    if (entry == m_entries.end())
        usageError("Archive::findNextSubstring: \"%s\" is not a key of \"%s\"", previous.c_str(),
                   m_fullPath.c_str());
    return findFrom(std::next(entry), part, key, info);
}

bool Archive::findFrom(Entries::iterator entry, std::string const& part, std::string& key,
                       FileInfo& info) const {
    entry = std::find_if(entry, m_entries.end(), [&part](auto const& candidate) {
        return candidate.first.find(part) != std::string::npos;
    });
    if (entry == m_entries.end())
        return false;
    entry->second.accessed = 1;
    key = entry->first;
    info = entry->second;
    return true;
}

} // namespace Zel
