// The library's paths on Windows.
#pragma once

#include <cstddef>
#include <string>

namespace Zel::platform {

/// Whether a directory on the path, from the root of so many characters on, is a symbolic link or another
/// reparse point.
bool leadsThroughLink(std::string const& path, std::size_t rootLength);

} // namespace Zel::platform
