// What paths are made of.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace Zel {

/// Whether a path holds a zero byte. The hosts would cut it there and find something else, so it names
/// nothing.
inline bool hasZeroByte(std::string_view path) { return path.find('\0') != std::string_view::npos; }

inline bool isSeparator(char character) { return character == '\\' || character == '/'; }

/// Goes through the parts of a path, empty ones too: "a//b" has three, "" has one. The path must outlive it.
class PathParts {
public:
    explicit PathParts(std::string_view path) : m_path(path) {}

    /// Goes to the next part, at first to the first. False at the end.
    bool next() {
        if (m_next > m_path.size())
            return false;
        m_begin = m_next;
        m_end = static_cast<std::size_t>(std::find_if(m_path.begin() + m_begin, m_path.end(), isSeparator) -
                                         m_path.begin());
        m_next = m_end + 1;
        return true;
    }

    std::string_view part() const { return m_path.substr(m_begin, m_end - m_begin); }
    /// What leads to the part, with it.
    std::string_view upToHere() const { return m_path.substr(0, m_end); }
    bool isLast() const { return m_end == m_path.size(); }

    /// Whether it leads nowhere: empty or ".".
    bool staysInPlace() const { return part().empty() || part() == "."; }

private:
    std::string_view m_path;
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    std::size_t m_next = 0;
};

} // namespace Zel
