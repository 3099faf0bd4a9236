// Case, as the library folds it.
#pragma once

#include <algorithm>
#include <cctype>
#include <string>

namespace zel {

inline std::string toLowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char character) { return static_cast<char>(std::tolower(character)); });
    return text;
}

} // namespace zel
