// Which entries' names lead down from a directory, and nowhere else.

#include "file/names.h"
#include "platform/path_parts.h"
#include "platform/platform.h"

#include <zel/file.h>

namespace Zel {
namespace {

/// Why one part of a name leads elsewhere.
char const* whyNotFollowed(PathParts const& name) {
    if (name.part() == "..")
        return "a \"..\" in its name";
    if (name.part().find(':') != std::string::npos)
        return "a drive in its name";
    if (!name.staysInPlace() && !platform::isFileName(std::string(name.part())))
        return "a name that this system keeps for itself";
    return nullptr;
}

} // namespace

char const* File::whyNotExtracted(std::string const& name) {
    if (hasZeroByte(name))
        return "a zero byte in its name";
    if (!name.empty() && isSeparator(name.front()))
        return "a leading separator";
    PathParts parts(name);
    while (parts.next())
        if (char const* const reason = whyNotFollowed(parts))
            return reason;
    return parts.staysInPlace() ? "the name of no file" : nullptr;
}

} // namespace Zel
