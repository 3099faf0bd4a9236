// The standard CRC-32 (reflected, polynomial 0x04C11DB7), as used by zlib, PNG and IEEE 802.3.
#pragma once

#include <cstddef>
#include <string>
#include <zel/api.h>

namespace Zel {

/// The checksum of `length` bytes; 0 for none. The value fits in 32 bits on every platform.
/// Check value: the nine bytes "123456789" give 0xCBF43926.
ZEL_API unsigned long crc32(void const* data, std::size_t length);

/// The checksum of bytes that come in pieces: `previous` is the checksum of all pieces before this one.
ZEL_API unsigned long crc32(void const* data, std::size_t length, unsigned long previous);

/// The checksum of a whole file, archived or loose, found as File finds it; 0 for an empty one. The file is
/// read in pieces. Throws what opening and reading a File throws.
ZEL_API unsigned long crc32(std::string const& fileName);

} // namespace Zel
