// What is printed as it is, and the escapes for the rest.

#include "command_line/printable_text.h"

#include <algorithm>
#include <array>

namespace zel {
namespace {

struct Character {
    char32_t code;
    std::size_t length; ///< in bytes; 0 where no UTF-8 begins
};

bool continues(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80; }

/// The first character of a text that is not empty.
Character firstOf(std::string_view text) {
    auto const lead = static_cast<unsigned char>(text.front());
    if (lead < 0x80)
        return {lead, 1};
    std::size_t const length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length ||
        !std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(length), continues))
        return {0, 0};
    char32_t code = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i)
        code = code << 6U | (static_cast<unsigned char>(text[i]) & 0x3FU);
    constexpr std::array<char32_t, 5> kLeast = {0, 0, 0x80, 0x800,
                                                0x10000}; // by length; less is too long a form
    bool const isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    return code < kLeast.at(length) || code > 0x10FFFF || isSurrogate ? Character{0, 0}
                                                                      : Character{code, length};
}

bool isControl(char32_t code) {
    struct Range {
        char32_t first, last;
    };
    constexpr std::array<Range, 6> kControls = {
        {{0, 0x1F}, {0x7F, 0x9F}, {0x61C, 0x61C}, {0x200E, 0x200F}, {0x2028, 0x202E}, {0x2066, 0x2069}}};
    return std::any_of(kControls.begin(), kControls.end(),
                       [code](Range const& range) { return code >= range.first && code <= range.last; });
}

/// How many bytes of a text that is not empty are printed as they are: one character's, or none.
std::size_t plainBytes(std::string_view text) {
    auto const [code, length] = firstOf(text);
    return isControl(code) ? 0 : length;
}

std::string escaped(char byte) {
    switch (byte) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        break;
    }
    constexpr std::string_view kDigits = "0123456789abcdef";
    auto const value = static_cast<unsigned char>(byte);
    return {'\\', 'x', kDigits[value >> 4U], kDigits[value & 0xFU]};
}

/// Escapes the text, and puts a backslash in front of each of the `marked` characters.
std::string escapedText(std::string_view text, std::string_view marked) {
    std::string result;
    while (!text.empty()) {
        std::size_t const plain = plainBytes(text);
        if (plain == 0)
            result += escaped(text.front());
        else if (marked.find(text.front()) != std::string_view::npos)
            result += '\\';
        result += text.substr(0, plain);
        text.remove_prefix(std::max<std::size_t>(plain, 1));
    }
    return result;
}

bool isPlainName(std::string_view name) { return !name.empty() && escapedText(name, "\"") == name; }

} // namespace

std::string printableName(std::string_view name) {
    return isPlainName(name) ? std::string(name) : quotedText(name);
}

std::string printableInQuotes(std::string_view name) {
    return isPlainName(name) ? std::string(name) : escapedText(name, "\"\\");
}

std::string quotedText(std::string_view text) { return '"' + escapedText(text, "\"\\") + '"'; }

std::string printableLine(std::string_view line) { return escapedText(line, ""); }

} // namespace zel
