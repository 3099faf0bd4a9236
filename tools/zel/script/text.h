// Reads a script as the library does.
#pragma once

#include <string>
#include <zel/file.h>

namespace zel {

/// The whole text of a script or a file that it includes. Throws what opening and reading a File throws.
inline std::string scriptText(std::string const& name) {
    Zel::File file(name, Zel::File::READ_TEXT);
    std::string text(static_cast<std::size_t>(file.getSize()), '\0');
    file.read(text.data(), file.getSize());
    return text;
}

} // namespace zel
