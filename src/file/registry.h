// Searching the registered archives. archive.cpp registers them.
#pragma once

#include <string>
#include <zel/archive.h>

namespace Zel {

/// The newest of the archives that File searches for which `test` holds; null when it holds for none.
template <class Test>
Archive const* findNewestArchive(Test test) {
    for (int slot = Archive::getArchiveCount() - 1; slot >= 0; --slot) {
        Archive const* const archive = Archive::getArchive(slot);
        if (test(*archive))
            return archive;
    }
    return nullptr;
}

/// The archive from which a File of that key is read, and its entry, which counts as accessed from then on.
/// Null when no archive has one.
inline Archive const* findEntry(std::string const& key, Archive::FileInfo& info) {
    return findNewestArchive([&](Archive const& archive) { return archive.findFile(key, info); });
}

} // namespace Zel
