// A file that lives in memory and has a path: what a target hands to a library that opens files by name.
#pragma once

#include <string>
#include <string_view>

namespace fuzz {

/// Replaces the content of the one file there is, and returns its full path for the library.
std::string hostFile(std::string_view content);

} // namespace fuzz
