// The kinds of characters that scripts tell apart: those of the C library in the "C" locale, whatever the
// host's.
#pragma once

namespace Zel {

inline bool isDigit(char character) { return character >= '0' && character <= '9'; }

inline bool isLetter(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

/// What names consist of.
inline bool isWordCharacter(char character) {
    return isLetter(character) || isDigit(character) || character == '_';
}

inline bool isBlank(char character) { return character == ' ' || character == '\t'; }

} // namespace Zel
