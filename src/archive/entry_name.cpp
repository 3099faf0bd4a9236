// Which entries' names lead down from a directory, and nowhere else.

#include "file/names.h"
#include "platform/platform.h"

#include <algorithm>
#include <zel/file.h>

namespace Zel {
namespace {

char const* whyNoFile(std::string const& component) {
    if (component.empty())
        return "an empty part in its name";
    if (component == "." || component == "..")
        return "a \".\" or \"..\" in its name";
    if (component.find(':') != std::string::npos)
        return "a drive in its name";
    if (!platform::isFileName(component))
        return "a name that this system keeps for itself";
    return nullptr;
}

} // namespace

char const* File::whyNotExtracted(std::string const& name) {
    if (hasZeroByte(name))
        return "a zero byte in its name";
    for (std::size_t begin = 0; begin <= name.size();) {
        std::size_t const end = std::min(name.find_first_of("\\/", begin), name.size());
        if (char const* const reason = whyNoFile(name.substr(begin, end - begin)))
            return reason;
        begin = end + 1;
    }
    return nullptr;
}

} // namespace Zel
