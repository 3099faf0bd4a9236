// Where a script includes a file that cannot be opened: the library's exception names the file alone.
#pragma once

#include <optional>
#include <string>

namespace zel {

struct IncludePlace {
    std::string file;
    int line = 0;
};

/// The first #include of `included` in a script or in what it includes, comments and all. Files that cannot
/// be read are passed over.
std::optional<IncludePlace> findInclude(std::string const& script, std::string const& included);

} // namespace zel
