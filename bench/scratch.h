// What the benchmarks share: a scratch directory as data directory, and files and archives in it.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

namespace bench {

/// The scratch directory of this process, which is the library's data directory from the first call on.
std::filesystem::path const& scratch();

/// The same bytes for the same length.
std::string content(std::size_t length);

/// Writes a file of that length, once, and returns its name.
std::string looseFile(std::size_t length);

/// Writes an archive of `count` small entries and, if not 0, one more of `length` bytes, once. Returns its
/// full path for the library.
std::string archive(int count, std::size_t length = 0);

/// The name of a small entry, and of the one more.
std::string smallEntry(int index);
std::string const kLargeEntry = "zz\\large.bin";

} // namespace bench
