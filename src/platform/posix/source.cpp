// Files that are read, on POSIX hosts.

#include "platform/platform.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/paths.h"

namespace Zel::platform {

Source::Source(std::string const& path) {
    // Not blocking keeps a pipe without a writer from holding up its reader; files do not notice.
    Descriptor opened(withExistingPath(
        path, [](char const* host) { return open(host, O_RDONLY | O_NONBLOCK | O_CLOEXEC); }));
    struct stat status;
    bool const isKnown = opened.isOpen() && fstat(opened.get(), &status) == 0;
    if (isKnown && S_ISDIR(status.st_mode))
        return;
    m_length = isKnown ? status.st_size : -1;
    m_descriptor = opened.release();
}

Source::~Source() {
    if (isOpen())
        close(m_descriptor);
}

// Meant: not const. The place in the file belongs to the object.
// NOLINTBEGIN(readability-make-member-function-const)
bool Source::seek(std::int64_t position) { return lseek(m_descriptor, position, SEEK_SET) == position; }

std::size_t Source::read(void* bytes, std::size_t count) {
    std::size_t done = 0;
    while (done < count) {
        ssize_t const more = ::read(m_descriptor, static_cast<char*>(bytes) + done, count - done);
        if (more > 0)
            done += static_cast<std::size_t>(more);
        else if (more == 0 || errno != EINTR)
            break;
    }
    return done;
}
// NOLINTEND(readability-make-member-function-const)

Stream Source::toStream() {
    Stream stream(fdopen(m_descriptor, "rb"));
    if (stream)
        m_descriptor = -1;
    return stream;
}

} // namespace Zel::platform
