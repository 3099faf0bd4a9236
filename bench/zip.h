// The archives of the benchmarks as ZIP files of stored entries, for peers. Only where libzip is installed.
#pragma once

#include "scratch.h"

#if __has_include(<zip.h>)
#define BENCH_ZIP

namespace bench {

/// Writes a ZIP file with the entries of archive(count, length), once, and returns its path. Separators are
/// slashes.
std::string zipFile(int count, std::size_t length = 0);

/// The name of an entry there.
std::string zipEntry(std::string name);

} // namespace bench

#endif
