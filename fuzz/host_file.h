// A file that has a path: what a target hands to a library that opens files by name.
#pragma once

#include <string>
#include <string_view>

namespace fuzz {

/// Replaces the content of the one file there is, and returns a full path of it for the library, which ends
/// in `extension`.
std::string hostFile(std::string_view content, std::string const& extension = "");

} // namespace fuzz
