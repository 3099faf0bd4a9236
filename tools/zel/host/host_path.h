// Paths as the host writes them, for a library that has names of its own.
#pragma once

#include "archive/folder_names.h"

#include <string>

namespace zel {

/// Throws Failure when the library would find another file for this path than the host: one whose name, or
/// whose directory's, differs in case alone and comes first.
void refuseOtherCase(std::string const& hostPath, FolderNames& folders);

/// Makes the working directory the library's data directory, from where a path of the host leads where it
/// leads elsewhere, and returns the name to give to the library. Throws Failure where that name would lead to
/// another file: the library tells neither case nor a colon in a name.
std::string libraryName(std::string const& hostPath);

} // namespace zel
