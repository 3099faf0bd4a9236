// Going from a directory to a name, component by component.

#include "file/names.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <zel/file.h>

namespace Zel {

Path::Path(std::string text) : m_text(std::move(text)) {}

void Path::append(std::string const& text) {
    if (text.empty())
        return;
    if (&text == &m_text) // the text must stay while this path changes
        return append(std::string(text));
    std::string_view steps = text;
    if (isSeparator(steps.back()))
        steps.remove_suffix(1);
    if (steps.size() >= 2 && isSeparator(steps[0]) && isSeparator(steps[1])) {
        m_text = withBackslashes(std::string(steps));
        return;
    }
    for (std::size_t begin = 0; begin <= steps.size();) {
        auto const end = static_cast<std::size_t>(
            std::find_if(steps.begin() + begin, steps.end(), isSeparator) - steps.begin());
        if (!applyComponent(steps.substr(begin, end - begin)))
            throw FileException_DirectoryNotFound(withBackslashes(std::string(steps)).c_str());
        begin = end + 1;
    }
}

/// False when there is nowhere to go.
bool Path::applyComponent(std::string_view component) {
    if (component.find(':') != std::string_view::npos) {
        m_text = component;
        m_text += '\\';
    } else if (component.empty()) {
        std::size_t const drive = m_text.find(':');
        if (drive == std::string::npos)
            return false;
        m_text.erase(drive + 1);
        m_text += '\\';
    } else if (component == "..") {
        std::size_t const separator = m_text.rfind('\\');
        if (separator == std::string::npos)
            return false;
        m_text.erase(separator);
    } else if (component != ".") {
        if (!m_text.empty() && m_text.back() != '\\')
            m_text += '\\';
        m_text += component;
    }
    return true;
}

} // namespace Zel
