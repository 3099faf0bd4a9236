// Where temporary paths begin.
#pragma once

#include <string>

namespace Zel {

/// Where the private part of a path that getTmpDir gave, or of one below it, begins: behind the machine-wide
/// data folder. npos for any other path.
std::size_t privatePart(std::string const& path);

} // namespace Zel
