// Which entries' names lead down from a directory, and nowhere else.

#include "file/names.h"
#include "platform/platform.h"

#include <algorithm>
#include <zel/file.h>

namespace Zel {
namespace {

/// Why one part of a name leads elsewhere. Those that stay where they are ("" and ".") lead nowhere.
char const* whyNotFollowed(std::string const& part) {
    if (part == "..")
        return "a \"..\" in its name";
    if (part.find(':') != std::string::npos)
        return "a drive in its name";
    if (!part.empty() && part != "." && !platform::isFileName(part))
        return "a name that this system keeps for itself";
    return nullptr;
}

} // namespace

char const* File::whyNotExtracted(std::string const& name) {
    if (hasZeroByte(name))
        return "a zero byte in its name";
    if (!name.empty() && isSeparator(name.front()))
        return "a leading separator";
    std::string part;
    for (std::size_t begin = 0; begin <= name.size();) {
        std::size_t const end = std::min(name.find_first_of("\\/", begin), name.size());
        part = name.substr(begin, end - begin);
        if (char const* const reason = whyNotFollowed(part))
            return reason;
        begin = end + 1;
    }
    return part.empty() || part == "." ? "the name of no file" : nullptr;
}

} // namespace Zel
