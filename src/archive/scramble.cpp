// Scrambling: every byte is combined with one fixed key, the same way in both directions.

#include <zel/archive.h>

namespace Zel {

void Archive::decrypt(void* data, int length) {
    constexpr unsigned char kKey = 0x3B;
    auto* const bytes = static_cast<unsigned char*>(data);
    for (int i = 0; i < length; ++i)
        bytes[i] ^= kKey;
}

} // namespace Zel
