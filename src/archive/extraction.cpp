// Copies of archived files on disk: which entries, and under what names.

#include "archive/extraction_target.h"
#include "file/names.h"
#include "platform/platform.h"

#include <utility>
#include <zel/file.h>

namespace Zel {
namespace {

/// The full path of a directory with a final separator, which is what the keys of its entries begin with.
std::string directoryPrefix(std::string const& directory) {
    std::string prefix = resolveName(directory);
    if (!prefix.ends_with('\\'))
        prefix += '\\';
    return prefix;
}

} // namespace

bool File::extract(std::string& name, Archive::FileInfo info, Archive const* archive,
                   ExtractionTarget& target) {
    File entry;
    entry.m_filename = name;
    std::string const dataDirectory = toLowerCase(getDataDir());
    if (!entry.openArchive(*archive) || !name.starts_with(dataDirectory))
        return false;
    std::string const relative = withBackslashes(name.substr(dataDirectory.size()));
    if (target.directory().empty() || whyNotExtracted(relative) != nullptr)
        return false;
    if (!target.makeDirectories(relative))
        return false;

    entry.enterEntry(*archive, info); // checked as a whole before anything is overwritten
    std::string path = target.directory() + relative;
    if (!target.copy(entry, static_cast<std::uint32_t>(info.crc), relative))
        return false;
    name = std::move(path);
    return true;
}

bool File::extractFile(std::string& name) {
    std::string const key = resolveName(name);
    ExtractionTarget target(getTmpDir(), ExtractionTarget::Temporary);
    name = key;
    Archive::FileInfo info;
    Archive const* const archive = findEntry(key, info);
    if (archive != nullptr && extract(name, info, archive, target))
        return true;
    return getArchiveOnly() == 0 && platform::pathExists(name);
}

/// Extracts the entries of the newest archive that has any whose key contains `prefix`.
File::Extraction File::extractEntries(std::string const& prefix, ExtractionTarget& target) {
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
        if (!extract(name, info, archive, target))
            return failed;
        failed = Extraction::Partly;
    } while (archive->findNextSubstring(prefix, key, key, info));
    return Extraction::Whole;
}

bool File::extractBelow(std::string prefix, std::string& dir, ExtractionTarget target) {
    Extraction const extraction = extractEntries(prefix, target);
    if (extraction != Extraction::None) {
        dir = withFinalSeparator(target.directory() + dir);
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
    return extractBelow(prefix, dir, {getTmpDir(), ExtractionTarget::Temporary});
}

bool File::extractDirectoryPermanent(std::string& dir, std::string destination) {
    return extractBelow(directoryPrefix(dir), dir, {std::move(destination), ExtractionTarget::Permanent});
}

} // namespace Zel
