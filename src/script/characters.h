// The kinds of characters that scripts tell apart. Letters and digits are those of ASCII, whatever the
// locale.
#pragma once

#include <array>
#include <cstdint>

namespace Zel {

/// What a character can be, one bit each.
enum CharacterKind : std::uint8_t {
    kDigit = 1,
    kLetter = 2,
    kUnderscore = 4,
    kPlain = 8,      ///< means nothing to the preprocessor: not _ " / # CR LF, zero, a letter or 0x80 to 0xFF
    kQuoted = 16,    ///< means nothing between quotes: not " CR LF, zero or 0x80 to 0xFF
    kValueMark = 32, ///< stands in values beside words, and begins neither an interval nor a string
    kCommented = 64, ///< means nothing in a block comment: not * / or 0x80 to 0xFF
    kLineEnd = 128   ///< CR or LF
};

inline constexpr std::array<std::uint8_t, 256> kCharacterKinds = [] {
    std::array<std::uint8_t, 256> kinds{};
    for (int i = 0; i < 0x80; ++i) {
        bool const isDigit = i >= '0' && i <= '9';
        bool const isLetter = (i >= 'A' && i <= 'Z') || (i >= 'a' && i <= 'z');
        bool const isQuoted = i != '"' && i != '\r' && i != '\n' && i != '\0';
        bool const isValueMark = i == '.' || i == ',' || i == '(' || i == ')' || i == '-' || i == ']';
        bool const isCommented = i != '*' && i != '/';
        bool const isLineEnd = i == '\r' || i == '\n';
        bool const isPlain = isQuoted && !isLetter && i != '_' && i != '/' && i != '#';
        kinds[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(
            (isDigit ? kDigit : 0) | (isLetter ? kLetter : 0) | (i == '_' ? kUnderscore : 0) |
            (isPlain ? kPlain : 0) | (isQuoted ? kQuoted : 0) | (isValueMark ? kValueMark : 0) |
            (isCommented ? kCommented : 0) | (isLineEnd ? kLineEnd : 0));
    }
    return kinds;
}();

inline bool isOfKind(char character, int kinds) {
    return (kCharacterKinds[static_cast<unsigned char>(character)] & kinds) != 0;
}

inline bool isDigit(char character) { return isOfKind(character, kDigit); }
inline bool isLetter(char character) { return isOfKind(character, kLetter); }
inline bool isBlank(char character) { return character == ' ' || character == '\t'; }

/// What begins a word, what goes on with it, and what goes on with a value.
constexpr int kWordStart = kLetter | kUnderscore;
constexpr int kWord = kWordStart | kDigit;
constexpr int kValue = kWord | kValueMark;

} // namespace Zel
