// Files that are read, on Windows: the C runtime's descriptors.

#include "platform/path_parts.h"
#include "platform/platform.h"

#include <algorithm>
#include <fcntl.h>
#include <io.h>
#include <limits>

namespace Zel::platform {

Source::Source(std::string const& path) {
    if (hasZeroByte(path))
        return;
    m_descriptor = _open(path.c_str(), _O_RDONLY | _O_BINARY | _O_NOINHERIT);
    if (isOpen())
        m_length = _filelengthi64(m_descriptor);
}

Source::~Source() {
    if (isOpen())
        _close(m_descriptor);
}

// Meant: not const. The place in the file belongs to the object.
// NOLINTBEGIN(readability-make-member-function-const)
bool Source::seek(std::int64_t position) { return _lseeki64(m_descriptor, position, SEEK_SET) == position; }

std::size_t Source::read(void* bytes, std::size_t count) {
    constexpr std::size_t kMost = std::numeric_limits<int>::max();
    std::size_t done = 0;
    for (int more = 1; more > 0 && done < count; done += static_cast<std::size_t>(std::max(more, 0)))
        more = _read(m_descriptor, static_cast<char*>(bytes) + done,
                     static_cast<unsigned>(std::min(count - done, kMost)));
    return done;
}
// NOLINTEND(readability-make-member-function-const)

Stream Source::toStream() {
    Stream stream(_fdopen(m_descriptor, "rb"));
    if (stream)
        m_descriptor = -1;
    return stream;
}

} // namespace Zel::platform
