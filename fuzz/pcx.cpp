// PCX files.

#include "picture.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    return fuzz::loadPicture(data, size, ".pcx");
}
