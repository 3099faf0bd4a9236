// The library folds names to lower case and looks for the first that differs in case alone. A host that tells
// case may hold several; the one that was named must be the one that is found.

#include "host_path.h"

#include "failure.h"
#include "fold.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <zel/file.h>

namespace zel {
namespace {

namespace fs = std::filesystem;

/// The name in a directory that the library finds for `name`: the one in lower case, or else the first of
/// those that differ in case alone.
std::string nameFound(fs::path const& directory, std::string const& name) {
    std::string const folded = toLowerCase(name);
    std::string found = name;
    std::error_code error; // a directory that cannot be read holds no other name for the library either
    for (fs::directory_entry const& entry : fs::directory_iterator(directory, error)) {
        std::string const other = entry.path().filename().string();
        if (other == folded)
            return other;
        if (toLowerCase(other) == folded)
            found = std::min(found, other);
    }
    return found;
}

} // namespace

std::string libraryName(std::string const& hostPath) {
    fs::path const absolute = fs::absolute(hostPath).lexically_normal();
    bool const hasSlashes = fs::path::preferred_separator == '/';
    if (absolute.relative_path().string().find_first_of(hasSlashes ? ":\\" : ":") != std::string::npos)
        throw Failure(kOperatingFailure,
                      "cannot open " + hostPath + ": there is a ':' or a '\\' in its path");
    for (fs::path path = absolute; path.has_relative_path(); path = path.parent_path()) {
        std::string const found = nameFound(path.parent_path(), path.filename().string());
        std::error_code error; // a name that leads nowhere is no other file
        if (found != path.filename().string() && fs::exists(path, error) &&
            !fs::equivalent(path.parent_path() / found, path, error))
            throw Failure(kOperatingFailure, "cannot open " + hostPath + ": " +
                                                 (path.parent_path() / found).string() +
                                                 " differs in case alone and would be opened instead");
    }

    Zel::File::setDataDir(Zel::File::getCurrentDir());
    return fs::path(hostPath).lexically_normal().string();
}

} // namespace zel
