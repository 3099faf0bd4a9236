// Looking into a directory.
#pragma once

#include <string>
#include <vector>

namespace Zel::platform {

/// What is in an open directory, without "." and "..", as far as it could be read. `isWhole` tells whether
/// that is all.
std::vector<std::string> entryNames(int directory, bool& isWhole);

} // namespace Zel::platform
