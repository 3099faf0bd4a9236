// How a file's name becomes the path under which archives and the disk know it.
#pragma once

#include "platform/path_parts.h"

#include <string>

namespace Zel {

/// The text in lower case, byte by byte, as the C library's tolower has it.
std::string toLowerCase(std::string text);

/// The text with backslashes in the place of slashes.
std::string withBackslashes(std::string text);

/// The path with a final separator, unless it is empty or has one.
std::string withFinalSeparator(std::string path);

/// The name taken from the data directory, the whole path in lower case. Throws
/// FileException_DirectoryNotFound when the name leads nowhere.
std::string resolveName(std::string const& name);

/// The same for a file to be opened. Throws FileException_OpenFailed as well, for a name with a zero byte.
std::string pathToOpen(std::string const& name);

} // namespace Zel
