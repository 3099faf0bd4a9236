// Names as archives and the library hold them.
#pragma once

#include <algorithm>
#include <cctype>
#include <string>
#include <utility>

namespace zel {

/// The text in lower case, byte by byte, as the library does it.
inline std::string toLowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char character) { return static_cast<char>(std::tolower(character)); });
    return text;
}

/// The form in which an archive stores a name: in lower case and with backslashes. Names that the library
/// takes for one have one such form.
inline std::string storedName(std::string name) {
    std::replace(name.begin(), name.end(), '/', '\\');
    return toLowerCase(std::move(name));
}

/// The name with the slashes that every host takes.
inline std::string withSlashes(std::string name) {
    std::replace(name.begin(), name.end(), '\\', '/');
    return name;
}

} // namespace zel
