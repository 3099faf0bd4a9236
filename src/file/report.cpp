// The report of archived files that nobody read: dead weight for the authors of an archive.

#include "archive/entries.h"

#include <cstdint>
#include <string>
#include <vector>
#include <zel/archive.h>
#include <zel/verbose.h>

namespace Zel {

void Archive::dumpUnaccessedFiles() const {
    constexpr float kMegabytes = 9.5367431640625e-07F;
    // Collected first: a callback may change this archive.
    std::vector<std::string> keys;
    std::uint32_t total = 0;
    std::string key;
    ArchiveEntries::Walk walk(*m_entries);
    while (auto const place = walk.next(key)) {
        if (m_entries->isAccessed(*place))
            continue;
        keys.push_back(key);
        total += m_entries->recordAt(*place).size;
    }

    verbose("\nUnaccessed files for archive \"%s\":\n\n", m_fullPath.c_str());
    for (std::string const& unaccessed : keys)
        verbose("Archived file \"%s\" was not accessed\n", unaccessed.c_str());
    // The total is a signed 32-bit number.
    float const megabytes = static_cast<float>(static_cast<std::int32_t>(total)) * kMegabytes;
    verbose("\nTotal %.1f MB of unaccessed files\n\n", static_cast<double>(megabytes));
}

void Archive::dumpAllUnaccessedFiles() {
    // Meant: the count covers named archives, the slots all of them. It is asked anew after each report,
    // because a callback may change the registry.
    for (int slot = 0; slot < getArchiveCount(); ++slot)
        getArchive(slot)->dumpUnaccessedFiles();
}

} // namespace Zel
