// Placing entries, by the rules of the library's own extraction.

#include "unpacking.h"

#include "failure.h"
#include "fold.h"
#include "printable_text.h"

#include <algorithm>
#include <utility>
#include <zel/file.h>

namespace zel {
namespace {

namespace fs = std::filesystem;

void makeDirectory(fs::path const& directory) {
    fs::file_status const status = fs::symlink_status(directory);
    if (fs::is_symlink(status))
        throw Failure(kFinding, printableName(directory.string()) + " is a link");
    if (fs::exists(status) && !fs::is_directory(status))
        throw Failure(kFinding, printableName(directory.string()) + " is no directory");
    fs::create_directory(directory);
}

} // namespace

Unpacking::Unpacking(fs::path directory) : m_directory(std::move(directory)) {
    fs::create_directories(m_directory);
}

fs::path Unpacking::place(std::string const& entryName) {
    if (char const* const reason = Zel::File::whyNotExtracted(entryName))
        throw Failure(kFinding, reason);
    std::string relative = entryName;
    std::replace(relative.begin(), relative.end(), '\\', '/');
    fs::path const names = fs::path(relative).lexically_normal();
    auto const [earlier, isNew] = m_placed.emplace(toLowerCase(names.generic_string()), entryName);
    if (!isNew)
        throw Failure(kFinding, "it would be the same file as " + printableName(earlier->second));

    fs::path target = m_directory;
    for (fs::path const& name : names.parent_path()) {
        target /= name;
        makeDirectory(target);
    }
    target /= names.filename();
    if (fs::is_directory(fs::symlink_status(target)))
        throw Failure(kFinding, printableName(target.string()) + " is a directory");
    return target;
}

} // namespace zel
