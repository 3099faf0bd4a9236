// Copies of archived files on disk: which entries, and under what names.

#include "extraction/target.h"
#include "file/content.h"
#include "file/names.h"
#include "file/registry.h"
#include "platform/platform.h"

#include <memory>
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

/// Copies one entry to where `target` says and for as long as it says. `name` is its key, and becomes the
/// path of the copy. False when the key is not below the data directory, its archive cannot be opened, or
/// nothing can be written under its name.
bool extract(std::string& name, Archive::FileInfo const& info, Archive const& archive,
             ExtractionTarget& target) {
    FileContent entry(archive, info, name);
    std::string const dataDirectory = toLowerCase(File::getDataDir());
    if (!entry.isOpen() || !name.starts_with(dataDirectory))
        return false;
    std::string const relative = withBackslashes(name.substr(dataDirectory.size()));
    if (target.directory().empty() || File::whyNotExtracted(relative) != nullptr)
        return false;
    if (!target.makeDirectories(relative))
        return false;

    // All of it is read, and checked, before anything is overwritten.
    std::unique_ptr<unsigned char[]> content;
    entry.readWhole([&content](std::size_t size) {
        content = std::make_unique_for_overwrite<unsigned char[]>(size);
        return content.get();
    });
    if (!target.write({content.get(), info.size}, name, relative))
        return false;
    name = target.directory() + relative;
    return true;
}

enum class Extraction { None, Partly, Whole };

/// Extracts the entries of the newest archive that has any whose key contains `prefix`.
Extraction extractEntries(std::string const& prefix, ExtractionTarget& target) {
    std::string key;
    Archive::FileInfo info;
    Archive const* const archive = findNewestArchive(
        [&](Archive const& candidate) { return candidate.findFirstSubstring(prefix, key, info); });
    if (archive == nullptr)
        return Extraction::None;
    Extraction failed = Extraction::None;
    do {
        std::string name = key;
        if (!extract(name, info, *archive, target))
            return failed;
        failed = Extraction::Partly;
    } while (archive->findNextSubstring(prefix, key, key, info));
    return Extraction::Whole;
}

bool extractBelow(std::string prefix, std::string& dir, ExtractionTarget target) {
    Extraction const extraction = extractEntries(prefix, target);
    if (extraction != Extraction::None) {
        dir = withFinalSeparator(target.directory() + dir);
        return extraction == Extraction::Whole;
    }
    if (File::getArchiveOnly() != 0)
        return false;
    dir = prefix;
    prefix.pop_back();
    return platform::pathExists(prefix);
}

} // namespace

bool File::extractFile(std::string& name) {
    std::string const key = resolveName(name);
    ExtractionTarget target(getTmpDir(), ExtractionTarget::Temporary);
    name = key;
    Archive::FileInfo info;
    Archive const* const archive = findEntry(key, info);
    if (archive != nullptr && extract(name, info, *archive, target))
        return true;
    return getArchiveOnly() == 0 && platform::pathExists(name);
}

bool File::extractDirectory(std::string& dir) {
    std::string const prefix = directoryPrefix(dir); // a name that leads nowhere makes no directory
    return extractBelow(prefix, dir, {getTmpDir(), ExtractionTarget::Temporary});
}

bool File::extractDirectoryPermanent(std::string& dir, std::string destination) {
    return extractBelow(directoryPrefix(dir), dir, {std::move(destination), ExtractionTarget::Permanent});
}

} // namespace Zel
