// Scrambling and unscrambling, for callers of the library.

#include "archive/scramble.h"

#include <zel/archive.h>

namespace Zel {

void Archive::decrypt(void* data, int length) {
    if (length > 0)
        unscramble(data, static_cast<std::size_t>(length));
}

} // namespace Zel
