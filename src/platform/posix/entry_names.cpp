#include "platform/posix/entry_names.h"

#include "platform/posix/descriptor.h"

#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <memory>

namespace Zel::platform {

std::vector<std::string> entryNames(int directory, bool& isWhole) {
    struct Closer {
        void operator()(DIR* entries) const { closedir(entries); }
    };
    Descriptor own(openat(directory, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    std::unique_ptr<DIR, Closer> const entries(own.isOpen() ? fdopendir(own.get()) : nullptr);
    if (entries)
        own.release(); // closed with the entries
    std::vector<std::string> names;
    errno = 0;
    while (dirent const* entry = entries ? readdir(entries.get()) : nullptr) {
        if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0)
            names.emplace_back(entry->d_name);
        errno = 0;
    }
    isWhole = entries && errno == 0;
    return names;
}

} // namespace Zel::platform
