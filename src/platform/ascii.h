// Case of names on the disk, in no locale.
#pragma once

#include <string>

namespace Zel::platform {

/// The text with the capitals of ASCII as small letters.
inline std::string toAsciiLowerCase(std::string text) {
    for (char& character : text)
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    return text;
}

} // namespace Zel::platform
