// The file in memory, by Linux's memfd_create; links to it give it extensions.

#include "host_file.h"

#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

namespace fuzz {
namespace {

std::string const& link(std::string const& target, std::string const& extension) {
    static std::string s_link; // a target uses one extension
    if (s_link.empty()) {
        s_link = "/tmp/zel-fuzz-" + std::to_string(getpid()) + extension;
        if (symlink(target.c_str(), s_link.c_str()) != 0)
            std::abort();
        std::atexit([] { unlink(s_link.c_str()); });
    }
    return s_link;
}

} // namespace

std::string hostFile(std::string_view content, std::string const& extension) {
    static int const s_descriptor = memfd_create("fuzz", 0);
    if (ftruncate(s_descriptor, 0) != 0 ||
        pwrite(s_descriptor, content.data(), content.size(), 0) != static_cast<ssize_t>(content.size()))
        std::abort();
    std::string const path = "/proc/self/fd/" + std::to_string(s_descriptor);
    return "z:" + (extension.empty() ? path : link(path, extension));
}

} // namespace fuzz
