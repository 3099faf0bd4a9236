// The checksum of memory and of files.

#include <zel/crc32.h>

#include "core/crc32_register.h"
#include "file/content.h"

namespace Zel {

unsigned long crc32(void const* data, std::size_t length) { return crc32(data, length, 0); }

unsigned long crc32(void const* data, std::size_t length, unsigned long previous) {
    Crc32Register crc(static_cast<std::uint32_t>(previous));
    crc.update(data, length);
    return crc.value();
}

unsigned long crc32(std::string const& fileName) {
    FileContent content(fileName);
    Crc32Register crc;
    content.readInPieces([&crc](unsigned char const* bytes, std::size_t count) { crc.update(bytes, count); });
    return crc.value();
}

} // namespace Zel
