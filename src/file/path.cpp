// Going from a directory to a name, component by component.

#include <algorithm>
#include <utility>
#include <zel/file.h>

namespace Zel {

Path::Path(std::string text) : m_text(std::move(text)) {}

std::string const& Path::str() const { return m_text; }

void Path::append(std::string const& text) {
    if (text.empty())
        return;
    std::string step = text;
    std::replace(step.begin(), step.end(), '/', '\\');
    if (step.back() == '\\')
        step.pop_back();

    if (step.starts_with("\\\\")) {
        m_text = step;
        return;
    }
    for (std::size_t begin = 0; begin <= step.size();) {
        std::size_t const end = std::min(step.find('\\', begin), step.size());
        applyComponent(step.substr(begin, end - begin), step);
        begin = end + 1;
    }
}

void Path::applyComponent(std::string const& component, std::string const& text) {
    if (component.find(':') != std::string::npos) {
        m_text = component;
        m_text += '\\';
    } else if (component.empty()) {
        std::size_t const drive = m_text.find(':');
        if (drive == std::string::npos)
            throw FileException_DirectoryNotFound(text.c_str());
        m_text.erase(drive + 1);
        m_text += '\\';
    } else if (component == "..") {
        std::size_t const separator = m_text.rfind('\\');
        if (separator == std::string::npos)
            throw FileException_DirectoryNotFound(text.c_str());
        m_text.erase(separator);
    } else if (component != ".") {
        if (!m_text.empty() && m_text.back() != '\\')
            m_text += '\\';
        m_text += component;
    }
}

} // namespace Zel
