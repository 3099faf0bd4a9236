// The library takes names in lower case, and looks for the first one that differs in case alone. A host that
// tells case may hold several. The one that was named must be the one that is found.

#include "host/host_path.h"

#include "command_line/failure.h"
#include "command_line/printable_text.h"

#include <filesystem>
#include <system_error>
#include <zel/file.h>

namespace zel {

namespace fs = std::filesystem;

void refuseOtherCase(std::string const& hostPath, FolderNames& folders) {
    fs::path const absolute = fs::absolute(hostPath).lexically_normal();
    for (fs::path path = absolute; path.has_relative_path(); path = path.parent_path()) {
        std::string const name = path.filename().string();
        fs::path const found = path.parent_path() / folders.found(path.parent_path(), name);
        std::error_code error; // a name that leads nowhere is no other file
        if (found.filename() != name && fs::exists(path, error) && !fs::equivalent(found, path, error))
            throw Failure(kOperatingFailure, "cannot open " + printableName(hostPath) + ": " +
                                                 printableName(found.string()) +
                                                 " differs in case alone and would be opened instead");
    }
}

std::string libraryName(std::string const& hostPath) {
    fs::path const absolute = fs::absolute(hostPath).lexically_normal();
    bool const hasSlashes = fs::path::preferred_separator == '/';
    if (absolute.relative_path().string().find_first_of(hasSlashes ? ":\\" : ":") != std::string::npos)
        throw Failure(kOperatingFailure,
                      "cannot open " + printableName(hostPath) + ": there is a ':' or a '\\' in its path");
    FolderNames folders;
    refuseOtherCase(hostPath, folders);

    Zel::File::setDataDir(Zel::File::getCurrentDir());
    return fs::path(hostPath).lexically_normal().string();
}

} // namespace zel
