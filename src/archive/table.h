// The table of entries at the head of an archive file. All numbers have 32 bits, the low byte first.
//
//   offset  size  field                                            scrambled
//   0       4     version, 44                                      no
//   4       4     T, the length of the table                       no
//   8       T     the records, back to back                        yes
//   8 + T   4     CRC-32 of the unscrambled table                  yes
//
//   record  L (4), name (L bytes), size (4), offset (4), CRC-32 of the entry's unscrambled bytes (4)
//
// An entry's bytes lie scrambled at its offset, counted from the start of the file.
#pragma once

#include <map>
#include <string>
#include <zel/archive.h>

namespace Zel {

class BinaryFile;

/// Reads the table from the start of `file` and returns its entries under `keyPrefix` + name; the first
/// record of a name counts. `archiveName` is what exceptions name: Exception_ArchiveVersionInvalid,
/// Exception_ArchiveCorrupt, and those of reading `file`.
std::map<std::string, Archive::FileInfo> readTable(BinaryFile& file, std::string const& archiveName,
                                                   std::string const& keyPrefix);

} // namespace Zel
