// The checksum of memory and of files.

#include <zel/crc32.h>

#include "core/crc32_register.h"

#include <vector>
#include <zel/file.h>

namespace Zel {

unsigned long crc32(void const* data, std::size_t length) { return crc32(data, length, 0); }

unsigned long crc32(void const* data, std::size_t length, unsigned long previous) {
    Crc32Register crc(static_cast<std::uint32_t>(previous));
    crc.update(data, length);
    return crc.value();
}

unsigned long crc32(std::string const& fileName) {
    File file(fileName, File::READ);
    std::vector<unsigned char> content(static_cast<std::size_t>(file.getSize()));
    file.read(content.data(), file.getSize());
    return crc32(content.data(), content.size());
}

} // namespace Zel
