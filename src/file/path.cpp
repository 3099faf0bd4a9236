// Going from a directory to a name, component by component.

#include "file/names.h"
#include "platform/path_parts.h"

#include <string_view>
#include <utility>
#include <zel/file.h>

namespace Zel {
namespace {

/// Where a text's drive ends, behind the first ":"; 0 when it has none.
std::size_t endOfDrive(std::string_view text) { return text.find(':') + 1; }

} // namespace

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
    std::size_t driveEnd = endOfDrive(m_text);
    for (PathParts parts(steps); parts.next();)
        if (!applyComponent(parts.part(), driveEnd))
            throw FileException_DirectoryNotFound(withBackslashes(std::string(steps)).c_str());
}

/// False when there is nowhere to go. `driveEnd` is that of the path, so that many steps to the root do not
/// each look for it.
bool Path::applyComponent(std::string_view component, std::size_t& driveEnd) {
    if (std::size_t const end = endOfDrive(component); end != 0) {
        m_text = component;
        m_text += '\\';
        driveEnd = end;
    } else if (component.empty()) {
        if (driveEnd == 0)
            return false;
        m_text.erase(driveEnd);
        m_text += '\\';
    } else if (component == "..") {
        std::size_t const separator = m_text.rfind('\\');
        if (separator == std::string::npos)
            return false;
        m_text.erase(separator);
        if (driveEnd > separator) // the path began with names, and went up above its drive
            driveEnd = 0;
    } else if (component != ".") {
        if (!m_text.empty() && m_text.back() != '\\')
            m_text += '\\';
        m_text += component;
    }
    return true;
}

} // namespace Zel
