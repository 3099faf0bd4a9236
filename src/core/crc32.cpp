// The checksum of memory and of files.

#include <zel/crc32.h>

#include "core/crc32_register.h"

#include <vector>
#include <zel/file.h>

namespace Zel {

unsigned long crc32(void const* data, std::size_t length) {
    Crc32Register crc;
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
