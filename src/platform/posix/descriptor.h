// Descriptors, and what tells one directory from another.
#pragma once

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace Zel::platform {

/// A descriptor that one scope owns; -1 is none.
class Descriptor {
public:
    explicit Descriptor(int value = -1) : m_value(value) {}
    Descriptor(Descriptor&& other) noexcept : m_value(std::exchange(other.m_value, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_value, other.m_value);
        return *this;
    }
    ~Descriptor() {
        if (isOpen())
            close(m_value);
    }

    int get() const { return m_value; }
    bool isOpen() const { return m_value != -1; }
    int release() { return std::exchange(m_value, -1); }

private:
    int m_value;
};

/// What stays the same for a directory however it is reached.
using Identity = std::pair<dev_t, ino_t>;

inline Identity identityOf(struct stat const& status) { return {status.st_dev, status.st_ino}; }

} // namespace Zel::platform
