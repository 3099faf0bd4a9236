// The library's paths on Windows.
#pragma once

#include <string>

namespace Zel::platform {

/// Whether the host would cut the path at a zero byte and find something else.
inline bool isCut(std::string const& path) { return path.find('\0') != std::string::npos; }

} // namespace Zel::platform
