// The file in memory, by Linux's memfd_create.

#include "host_file.h"

#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

namespace fuzz {

std::string hostFile(std::string_view content) {
    static int const s_descriptor = memfd_create("fuzz", 0);
    if (ftruncate(s_descriptor, 0) != 0 ||
        pwrite(s_descriptor, content.data(), content.size(), 0) != static_cast<ssize_t>(content.size()))
        std::abort();
    return "z:\\proc\\self\\fd\\" + std::to_string(s_descriptor);
}

} // namespace fuzz
