// Names that no file has.

#include "file/number_pattern.h"
#include "platform/platform.h"

#include <utility>
#include <zel/file.h>

namespace Zel {
namespace {

/// The name for a number, by a printf pattern.
std::string temporaryName(std::string const& pattern, unsigned number) {
    auto name = formatNumber(pattern.c_str(), number); // up to a zero byte
    if (!name)
        throw FileException_GetTempNameFailed(pattern.c_str());
    return *std::move(name);
}

} // namespace

std::string File::getTempName(std::string const& pattern) {
    std::string const first = temporaryName(pattern, 0);
    std::string candidate = first;
    for (unsigned number = 1; platform::pathExists(candidate); ++number) {
        candidate = temporaryName(pattern, number);
        if (candidate == first)
            throw FileException_GetTempNameFailed(pattern.c_str());
    }
    return candidate;
}

} // namespace Zel
