// Looking into a directory.
#pragma once

#include <string>
#include <vector>

namespace Zel::platform {

/// What is in an open directory, without "." and ".."; nothing when it cannot be read.
std::vector<std::string> entryNames(int directory);

} // namespace Zel::platform
